// SPDX-FileCopyrightText: Aerolith developers
// Coordinate tables read line by line through a text stream.
#pragma once

#include <QPolygonF>
#include <QString>

namespace baseline {

/// Tabs to blanks, commas to points, then one pass for each character that is removed.
QString clean(QString s);

/// Whether a cleaned line has content and no letter.
bool is_numeric(const QString& s);

/// "0" before bare points.
QString Repair_NumString(QString s);

/// The first three fields of a line, character by character.
void FindNumericSubStrings(const QString& line, QString* S);

/// One point (x, y) a numeric line, in file order.
QPolygonF Read_Normal(const QString& fileName);

/// Half contour below a header row, mirrored.
QPolygonF Read_Symetric(const QString& fileName);

/// Columns x, upper y, lower y.
QPolygonF Read_Eppler(const QString& fileName);

/// The layout told from the first three numeric lines, then the reader of that layout.
QPolygonF airfoil_Read_All(const QString& fileName);

} // namespace baseline
