// SPDX-FileCopyrightText: Aerolith developers
// Third step of the reading: which columns are coordinates, and in what unit.
#include "tables/columns_p.h"

#include <algorithm>
#include <cmath>

namespace tables {

namespace {

// Point numbers rise by one from row to row, and may start again after a gap or words.
bool is_numbering(const Sheet& sheet, int column) {
    for (int row = 0; row < sheet.rows(); ++row) {
        const double number = sheet.at(row, column);
        const bool goes_on = row > 0 && number == sheet.at(row - 1, column) + 1.0;
        const bool begins = (row == 0 || sheet.breaks(row)) && (number == 0.0 || number == 1.0);
        if (!goes_on && !begins)
            return false;
    }
    return sheet.rows() > 2;
}

bool is_empty(const Sheet& sheet, int column) {
    for (int row = 0; row < sheet.rows(); ++row) {
        if (!std::isnan(sheet.at(row, column)))
            return false;
    }
    return true;
}

bool is_constant(const Sheet& sheet, int column) {
    const Range range = range_of(sheet, column);
    return range.least == range.greatest;
}

// A numbering that could just as well be stations in percent or per mille.
bool could_be_stations(const Sheet& sheet, int column) {
    const Range range = range_of(sheet, column);
    return range.least == 0.0 && (range.greatest == 100.0 || range.greatest == 1000.0);
}

void add_choices(Choice choice, std::vector<Choice>& choices) {
    const Sheet& sheet = choice.sheet;
    if (sheet.columns() < 2)
        return;
    for (int column = 0; column < sheet.columns(); ++column) {
        const bool empty = is_empty(sheet, column);
        const bool numbering = !empty && sheet.columns() > 2 &&
                               (column == 0 || column == sheet.columns() - 1) &&
                               is_numbering(sheet, column);
        const bool constant = !empty && sheet.columns() > 2 && is_constant(sheet, column);
        if (!empty && !numbering && !constant)
            continue;
        Choice without = choice;
        without.sheet.remove_column(column);
        if (numbering)
            without.findings.append(
                {Gravity::note, sheet.line(0),
                 QStringLiteral("column %1 counts the points").arg(column + 1)});
        const bool both_make_sense =
            (constant && column > 0 && range_of(sheet, column).least == 0.0) ||
            (numbering && could_be_stations(sheet, column));
        add_choices(std::move(without), choices);
        if (both_make_sense)
            break;
        return;
    }
    choices.push_back(std::move(choice));
}

bool is_about(double value, double expected) {
    return std::abs(value - expected) <= 0.03 * expected;
}

} // namespace

std::vector<Choice> column_choices(const Sheet& sheet) {
    std::vector<Choice> choices;
    add_choices({sheet, {}}, choices);
    return choices;
}

std::optional<Finding> find_unit(Choice& choice, const Sheet& scope) {
    // A section with an extended flap is as wide as this, in fractions or in percent.
    constexpr double widest = 1.3;
    constexpr double narrowest = 0.9;
    Sheet& sheet = choice.sheet;
    const Range x = range_of(scope, 0);
    const double width = x.width();
    if (!(width > 0.0) || (width >= narrowest && width <= widest))
        return std::nullopt;
    const auto note = [&](const QString& text) {
        choice.findings.append({Gravity::note, sheet.line(0), text});
    };
    const QString runs = QStringLiteral("x runs from %1 to %2: ").arg(x.least).arg(x.greatest);
    if (width < narrowest && x.least > 0.05 && x.greatest < widest)
        return Finding{Gravity::error, sheet.line(0),
                       runs + QStringLiteral("expected a whole chord")};
    double unit = width;
    if (is_about(width, 100.0) || (x.least == 0.0 && width > 100.0 && width <= 125.0)) {
        unit = 100.0;
        note(runs + QStringLiteral("percent, scaled"));
    } else if (is_about(width, 1000.0)) {
        unit = 1000.0;
        note(runs + QStringLiteral("per mille, scaled"));
    } else {
        note(runs + QStringLiteral("taken as millimetres of this chord, scaled"));
    }
    double y_unit = unit;
    Range y = range_of(sheet, 1);
    for (int column = 2; column < sheet.columns(); ++column) {
        const Range other = range_of(sheet, column);
        y = {std::min(y.least, other.least), std::max(y.greatest, other.greatest)};
    }
    // Thinner than 1 % in the unit of x, and as thick as sections are in fractions.
    if (unit >= 100.0 && y.width() < 0.01 * unit && y.width() > 0.01 && y.width() < 0.6 &&
        sheet.columns() == 2) {
        y_unit = 1.0;
        choice.findings.append({Gravity::doubt, sheet.line(0),
                                QStringLiteral("y runs from %1 to %2: taken as fractions of the "
                                               "chord beside x in another unit")
                                    .arg(y.least)
                                    .arg(y.greatest)});
    }
    sheet.set_unit(unit, y_unit);
    return std::nullopt;
}

} // namespace tables
