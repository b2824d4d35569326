// SPDX-FileCopyrightText: Aerolith developers
// The spline as a coordinate table.
#include "editor/editspline.h"

#include "airfoil/airfoil.h"
#include "document/savefile.h"

namespace {

// Every ninth sample is fine enough for the programs that read the tables.
constexpr int listed_samples_step = 9;

} // namespace

void EditSpline::Save_airfoil_table(QString filename) {
    if (filename.isEmpty())
        return;
    const QPolygonF poly = normalize_FromScreen(spline_poly);
    const QString table = airfoil_table(filename, poly, listed_samples_step) + QLatin1Char(' ');
    saved = write_file(filename, table.toUtf8());
}

bool EditSpline::table_saved() const {
    return saved;
}
