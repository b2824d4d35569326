// SPDX-FileCopyrightText: Aerolith developers
#include "sections/shape.h"

#include "sections/shape_p.h"

#include <algorithm>
#include <cmath>

namespace sections {

namespace {

using tables::Finding;
using tables::Gravity;
using tables::Kind;
using tables::Table;

QString number(double value) {
    return QString::number(value, 'g', 6);
}

QString point_text(QPointF point) {
    return number(point.x()) + QLatin1Char(' ') + number(point.y());
}

class Inspection {
public:
    explicit Inspection(const Table& table_) : table(table_) {
        double least = table.points.first().x();
        double greatest = least;
        for (const QPointF& point : table.points) {
            least = std::min(least, point.x());
            greatest = std::max(greatest, point.x());
        }
        const double width = greatest > least ? greatest - least : 1.0;
        const QPointF origin(least, 0.0);
        rows.reserve(std::size_t(table.points.size()));
        std::vector<int> repeats;
        QPointF previous;
        for (int i = 0; i < int(table.points.size()); ++i) {
            const QPointF point = (table.points[i] - origin) / width;
            if (i > 0 && point == previous)
                repeats.push_back(i);
            else
                rows.push_back({point, i});
            previous = point;
        }
        add_each(
            Gravity::note, repeats, [this](int i) { return line_of(i); },
            [this](int i) { return QStringLiteral("repeats line %1").arg(line_of(i - 1)); });
    }

    QList<Finding> findings() {
        if (find_foreign_end())
            return sorted();
        drop_stray_row();
        find_missing_heights();
        if (!is_one_run())
            return sorted();
        find_spikes();
        find_gap();
        if (table.kind == Kind::section)
            find_overlap();
        if (table.kind != Kind::flat)
            find_open_nose();
        return sorted();
    }

private:
    // A row of three columns gives two points, but is reported once.
    void add(Gravity gravity, int line, const QString& text) {
        const auto is_told = [=](const Finding& finding) {
            return finding.line == line && finding.gravity == gravity;
        };
        if (line == 0 || std::none_of(found.begin(), found.end(), is_told))
            found.append({gravity, line, text});
    }

    int line_of(int source) const {
        const auto i = std::size_t(source);
        return i < table.lines.size() ? table.lines[i] : 0;
    }
    int line_of(const OutlineRow& row) const { return line_of(row.source); }
    QPointF given(const OutlineRow& row) const { return table.points[row.source]; }

    // Reports the first few findings of one kind, and the number of the others.
    template<typename Index, typename Line, typename Text>
    void add_each(Gravity gravity, const std::vector<Index>& indices, Line line, Text text) {
        constexpr std::size_t most_told = 10;
        for (std::size_t i = 0; i < std::min(indices.size(), most_told); ++i)
            add(gravity, line(indices[i]), text(indices[i]));
        if (indices.size() > most_told) {
            found.append({gravity, 0,
                          QStringLiteral("%1 more rows like that of line %2")
                              .arg(indices.size() - most_told)
                              .arg(line(indices[most_told - 1]))});
        }
    }

    template<typename Text>
    void add_each_row(Gravity gravity, const std::vector<std::size_t>& indices, Text text) {
        add_each(
            gravity, indices, [this](std::size_t i) { return line_of(rows[i]); }, text);
    }

    QList<Finding> sorted() const {
        QList<Finding> ordered = found;
        std::stable_sort(ordered.begin(), ordered.end(),
                         [](const Finding& a, const Finding& b) { return a.line < b.line; });
        return ordered;
    }

    // Whether one end is at least ten times as far from the other rows as these extend.
    bool find_foreign_end() {
        constexpr double least_share = 0.1;
        const auto extent = [](auto begin, auto end) {
            const auto [least, greatest] =
                std::minmax_element(begin, end, [](const OutlineRow& a, const OutlineRow& b) {
                    return a.point.x() < b.point.x();
                });
            return greatest->point.x() - least->point.x();
        };
        if (rows.size() < 3)
            return false;
        for (const bool at_end : {true, false}) {
            const auto begin = rows.begin() + (at_end ? 0 : 1);
            const auto end = rows.end() - (at_end ? 1 : 0);
            if (extent(begin, end) < least_share) {
                const OutlineRow& foreign = at_end ? rows.back() : rows.front();
                add(Gravity::error, line_of(foreign),
                    QStringLiteral("%1 is in another unit than the other rows, which end at x = %2")
                        .arg(point_text(given(foreign)),
                             number(given(at_end ? *(end - 1) : *begin).x())));
                return true;
            }
        }
        return false;
    }

    // Drops a row far away that follows the trailing edge at the end of the outline.
    void drop_stray_row() {
        constexpr double far = 0.3;
        constexpr double near = 0.05;
        if (rows.size() < 4)
            return;
        const QPointF first = rows.front().point;
        const QPointF last = (rows.end() - 2)->point;
        const QPointF stray = rows.back().point - last;
        if (std::hypot(stray.x(), stray.y()) > far &&
            std::hypot(last.x() - first.x(), last.y() - first.y()) < near) {
            add(Gravity::doubt, line_of(rows.back()),
                QStringLiteral("%1 lies behind the end of the outline")
                    .arg(point_text(given(rows.back()))));
            rows.pop_back();
        }
    }

    void leave_out(const std::vector<std::size_t>& indices) {
        auto next = indices.begin();
        std::size_t kept = 0;
        for (std::size_t i = 0; i < rows.size(); ++i) {
            if (next != indices.end() && *next == i)
                ++next;
            else
                rows[kept++] = rows[i];
        }
        rows.resize(kept);
    }

    void find_missing_heights() {
        const std::vector<std::size_t> all = rows_without_height(rows);
        add_each_row(Gravity::doubt, all, [this](std::size_t i) {
            return QStringLiteral("y = 0 between %1 and %2")
                .arg(number(given(rows[i - 1]).y()), number(given(rows[i + 1]).y()));
        });
        leave_out(all);
    }

    void find_spikes() {
        std::vector<std::size_t> all;
        std::vector<double> distances;
        for (const Spike& spike : spikes(rows)) {
            all.push_back(spike.row);
            distances.push_back(spike.distance);
        }
        std::size_t next = 0;
        add_each_row(Gravity::doubt, all, [&](std::size_t i) {
            return QStringLiteral("%1 lies %2 off the line through its neighbours")
                .arg(point_text(given(rows[i])), QString::number(distances[next++], 'g', 2));
        });
        leave_out(all);
    }

    // Whether x runs to the nose and back once; drops single rows that run backwards.
    bool is_one_run() {
        const std::vector<std::size_t> all = rows_running_back(rows);
        if (all.empty())
            return !find_second_turn();
        OutlineRows before = rows;
        leave_out(all);
        if (find_second_turn())
            return false;
        std::swap(rows, before);
        add_each_row(Gravity::doubt, all, [this](std::size_t i) {
            return QStringLiteral("x = %1 is not between those of its neighbours, %2 and %3")
                .arg(number(given(rows[i]).x()), number(given(rows[i - 1]).x()),
                     number(given(rows[i + 1]).x()));
        });
        std::swap(rows, before);
        return true;
    }

    bool find_second_turn() {
        const std::optional<std::size_t> turn = second_turn(rows);
        if (!turn)
            return false;
        add(Gravity::error, line_of(rows[*turn]),
            QStringLiteral("x turns again at %1; expected one nose")
                .arg(number(given(rows[*turn]).x())));
        return true;
    }

    void find_gap() {
        constexpr double far = 0.03;
        constexpr double far_for_its_height = 0.25;
        constexpr double far_in_x = 0.02;
        const QPointF across = rows.back().point - rows.front().point;
        const double gap = std::hypot(across.x(), across.y());
        const auto [low, high] = std::minmax_element(
            rows.begin(), rows.end(),
            [](const OutlineRow& a, const OutlineRow& b) { return a.point.y() < b.point.y(); });
        const double height = high->point.y() - low->point.y();
        if (gap > far && (gap > far_for_its_height * height || std::abs(across.x()) > far_in_x))
            add(Gravity::doubt, line_of(rows.back()),
                QStringLiteral("the ends are %1 apart").arg(number(gap)));
    }

    void find_overlap() {
        constexpr double touching = 1e-5;
        constexpr double trailing_edge = 0.95;
        const Overlap inside = greatest_overlap(rows, 0.0, trailing_edge);
        if (inside.depth > touching) {
            add(Gravity::error, line_of(rows[inside.row]),
                QStringLiteral("the sides cross: the lower one lies %1 above the upper one at "
                               "x = %2")
                    .arg(number(inside.depth), number(given(rows[inside.row]).x())));
            return;
        }
        const Overlap behind = greatest_overlap(rows, trailing_edge, 1.0);
        if (behind.depth > touching)
            add(Gravity::doubt, line_of(rows[behind.row]),
                QStringLiteral("the sides cross at the trailing edge, by %1 at x = %2")
                    .arg(number(behind.depth), number(given(rows[behind.row]).x())));
    }

    void find_open_nose() {
        constexpr double least_height = 0.003;
        const NoseGap gap = nose_gap(rows);
        if (gap.height > least_height)
            add(Gravity::note, line_of(rows[gap.row]),
                QStringLiteral("few points at the nose: it turns by %1 degrees in one row, which "
                               "leaves %2 of its shape open")
                    .arg(QString::number(gap.turn, 'f', 0), QString::number(gap.height, 'g', 2)));
    }

    const Table& table;
    OutlineRows rows;
    QList<Finding> found;
};

} // namespace

QList<Finding> shape_findings(const Table& table) {
    constexpr qsizetype least_points = 6;
    if (table.points.size() < least_points)
        return {};
    return Inspection(table).findings();
}

} // namespace sections
