// SPDX-FileCopyrightText: Aerolith developers
// Any table with any options gives a valid spline or a reason.
#include "fitting/fit.h"
#include "fuzzing/fuzzing.h"
#include "tables/table.h"

#include <cmath>

namespace {

void require_sound_fit(const QPolygonF& table, const fitting::Request& request) {
    const fitting::Fit fit = fitting::fit(table, request);
    if (!fit.reason.isEmpty())
        return;
    const SplineFoil& spline = fit.spline;
    REQUIRE(spline.num_pnt >= fitting::least_points && spline.num_pnt <= fitting::most_points);
    REQUIRE(request.points == 0 || spline.num_pnt == request.points);
    for (int i = 0; i < spline.num_pnt; ++i)
        REQUIRE(std::isfinite(spline.CP[i].x()) && std::isfinite(spline.CP[i].y()));
    REQUIRE(std::isfinite(fit.deviation.largest));
    REQUIRE(fit.holds == (fit.deviation.outside == 0));
    if (request.ends == fitting::Ends::closed)
        REQUIRE(spline.CP[0] == spline.CP[spline.num_pnt - 1]);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    constexpr size_t longest = 2000; // a search is slow under the sanitizers
    if (size < 2 || size > longest)
        return 0;
    fitting::Request request;
    request.points = data[0] % 28 < 1 ? 0 : 3 + data[0] % 28;
    constexpr fitting::Ends ends[] = {fitting::Ends::table, fitting::Ends::closed,
                                      fitting::Ends::symmetric};
    request.ends = ends[data[1] % 3];
    request.tolerance = 1e-5 * double(1 + data[1]);
    const QByteArray bytes(reinterpret_cast<const char*>(data) + 2, qsizetype(size) - 2);
    const tables::Table table = tables::read(bytes);
    if (table.readable())
        require_sound_fit(table.points, request);
    return 0;
}
