// SPDX-FileCopyrightText: Aerolith developers
// Coordinate tables read line by line through a text stream, with one statement for each rule. It
// shares no code with the program's reader, but its names and results are the same.
#pragma once

#include <QPolygonF>
#include <QString>

namespace baseline {

QString clean(QString s);
int isLatString(const QString& s);
QString Repair_NumString(QString s);
void FindNumericSubStrings(const QString& line, QString* S);

/// @p s as a single-precision number; 0 for what is not a number or exceeds single precision.
float to_single(const QString& s);

QPolygonF Read_Normal(const QString& fileName);
QPolygonF Read_Symetric(const QString& fileName);
QPolygonF Read_Eppler(const QString& fileName);
QString FoilText_Read(const QString& fileName);
QPolygonF airfoil_Read_All(const QString& fileName);
QPolygonF Normalize_airfoil2(const QPolygonF& poly, int rot);
QPolygonF airfoil_Read(const QString& fileName);
QPolygonF plainTextRead(QString mtext);

} // namespace baseline
