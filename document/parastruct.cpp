// SPDX-FileCopyrightText: Aerolith developers
// The document and its spline.
#include "document/parastruct.h"

#include "numerics/splinebasis.h"

#include <algorithm>

ParaStruct* dataStruct = nullptr;

namespace {

constexpr int highest_degree = 5;

} // namespace

ParaStruct* GetDataStruct() {
    if (!dataStruct)
        dataStruct = new ParaStruct;
    return dataStruct;
}

SplineFoil::SplineFoil() = default;

int SplineFoil::point_count() const {
    return std::clamp(num_pnt, 0, MAXNUMPOINTS);
}

int SplineFoil::knot_count() const {
    return std::clamp(num_knt, 0, MAXNUMKNOTS);
}

bool SplineFoil::has_curve() const {
    return point_count() > 0 && degree >= 0 && degree <= highest_degree &&
           point_count() + degree + 1 <= MAXNUMKNOTS;
}

void SplineFoil::init_knots() {
    degree = DEGREE2;
    order = degree + 1;
    num_knt = point_count() + order;
    for (int i = 0; i < num_knt; ++i) {
        b_knots[i] = i / double(num_knt - 1);
        b_multi_knot[i] = 1;
    }
}

QPolygonF SplineFoil::make_SplinePoly() const {
    if (!has_curve())
        return QPolygonF();
    // Not in the record, which is copied and stored.
    thread_local SplineBasis basis;
    basis.set_knots(point_count(), degree, b_knots);
    return basis.sample(CP);
}

ParaStruct::ParaStruct() = default;

void ParaStruct::SetInitialValues() {}
