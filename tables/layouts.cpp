// SPDX-FileCopyrightText: Aerolith developers
// Fourth step of the reading: the layouts of outlines.
#include "tables/layouts_p.h"

#include <cmath>

namespace tables {

namespace {

// Exact except for the sign of zero; QPointF's operator has a tolerance.
bool are_same(QPointF a, QPointF b) {
    return a.x() == b.x() && a.y() == b.y();
}

} // namespace

const std::vector<Layout>& layouts() {
    static const std::vector<Layout> all = {
        {"lep", "a paragliding profile with its four counts", read_lep},
        {"vsp", "a flag, two counts and two halves", read_vsp},
        {"selig", "an outline from the trailing edge round the nose", read_selig},
        {"loop", "an outline from the nose round the trailing edge", read_loop},
        {"lednicer", "two halves", read_halves},
        {"columns", "x with an upper and a lower y", read_columns},
        {"pairs", "x and y of one side beside those of the other", read_pairs},
        {"turns", "upper and lower points in turn", read_turns},
        {"half", "one side, to be mirrored", read_half},
    };
    return all;
}

Outline side_of(const Sheet& sheet, int first, int last, int step, int y) {
    Outline side;
    side.reserve(last - first + 1);
    for (int i = 0; i <= last - first; ++i) {
        const int row = step > 0 ? first + i : last - i;
        const QPointF point = sheet.point(row, 0, y);
        if (!std::isnan(point.x()) && !std::isnan(point.y()))
            side.append(point, sheet.line(row));
    }
    return side;
}

bool begins_at_nose(const Sheet& sheet) {
    const Range x = range_of(sheet, 0);
    return std::abs(x.least) <= 0.05 * x.width();
}

Outline joined(Outline to_nose, const Outline& from_nose) {
    const bool shared = !to_nose.points.isEmpty() && !from_nose.points.isEmpty() &&
                        are_same(to_nose.points.last(), from_nose.points.first());
    to_nose.reserve(to_nose.points.size() + from_nose.points.size());
    for (int i = shared ? 1 : 0; i < from_nose.points.size(); ++i)
        to_nose.append(from_nose.points[i], from_nose.lines[std::size_t(i)]);
    return to_nose;
}

Outline mirrored(Outline to_nose) {
    const qsizetype count = to_nose.points.size();
    to_nose.reserve(2 * count);
    for (qsizetype i = count - 1; i >= 0; --i) {
        const QPointF point = to_nose.points[i];
        const QPointF image = {point.x(), 0.0 - point.y()};
        if (i < count - 1 || !are_same(point, image))
            to_nose.append(image, to_nose.lines[std::size_t(i)]);
    }
    return to_nose;
}

} // namespace tables
