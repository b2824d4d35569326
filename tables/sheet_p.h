// SPDX-FileCopyrightText: Aerolith developers
// The rows that may be one section: which lines they are, which columns count, in what unit.
#pragma once

#include "tables/rows_p.h"
#include "tables/table.h"

#include <QPointF>

#include <vector>

namespace tables {

/// Rows with the same number of columns. A view of Rows, which must outlive it.
class Sheet {
public:
    /// The lines [@p first, @p last) of @p table that are numbers and have @p columns of them.
    Sheet(const Rows& table, std::size_t first, std::size_t last, int columns);

    int rows() const { return int(members.size()); }
    int columns() const { return int(chosen.size()); }
    /// In fractions of the chord once the unit is set; NaN for a place without a number.
    double at(int row, int column) const {
        return source->value(members[std::size_t(row)], chosen[std::size_t(column)]) /
               (column == 0 ? x_unit : y_unit);
    }
    QPointF point(int row, int x, int y) const {
        return {source->value(members[std::size_t(row)], chosen[std::size_t(x)]) / x_unit,
                source->value(members[std::size_t(row)], chosen[std::size_t(y)]) / y_unit};
    }
    int line(int row) const { return source->lines[members[std::size_t(row)]].number; }
    /// The index of a row among the lines of the file that are not blank.
    std::size_t place(int row) const { return members[std::size_t(row)]; }
    /// Whether there are blank lines or words between @p row and the one before it.
    bool breaks(int row) const;
    /// The rows [@p first, @p last).
    Sheet part(int first, int last) const;

    /// Removes the rows for which @p unwanted(row) holds.
    template<typename Predicate>
    void remove_rows(Predicate unwanted) {
        std::size_t kept = 0;
        for (std::size_t row = 0; row < members.size(); ++row) {
            // Rows are only written before the one being tested.
            if (!unwanted(int(row)))
                members[kept++] = members[row];
        }
        members.resize(kept);
    }
    void remove_column(int column);
    /// Sets the divisors of x and y.
    void set_unit(double unit_of_x, double unit_of_y) {
        x_unit = unit_of_x;
        y_unit = unit_of_y;
    }
    const Rows& table() const { return *source; }

private:
    const Rows* source;
    std::vector<quint32> members; ///< Places in source->lines.
    std::vector<int> chosen;      ///< Columns of source.
    double x_unit = 1.0;
    double y_unit = 1.0;
};

/// The least and the greatest number of some rows of a column; none give least > greatest.
struct Range {
    double least;
    double greatest;
    double width() const { return greatest - least; }
    /// Extended to @p value, unless that is NaN.
    Range with(double value) const {
        return {value < least ? value : least, value > greatest ? value : greatest};
    }
};
Range range_of(const Sheet& sheet, int column, int first, int last);
inline Range range_of(const Sheet& sheet, int column) {
    return range_of(sheet, column, 0, sheet.rows());
}

/// The numbers of a row for messages: "1.25 -0.5".
QString shown_row(const Sheet& sheet, int row);

/// Removes the rows that lack a number in @p column and reports the first ones.
void remove_incomplete_rows(Sheet& sheet, int column, QList<Finding>& findings);

} // namespace tables
