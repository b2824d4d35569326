// SPDX-FileCopyrightText: Aerolith developers
// Coordinate tables read line by line through a text stream, one statement a rule. It shares
// no code with the reader that the program uses, and the names and results are that one's.
#pragma once

#include <QPolygonF>
#include <QString>

namespace baseline {

QString clean(QString s);
int isLatString(const QString& s);
QString Repair_NumString(QString s);
void FindNumericSubStrings(const QString& line, QString* S);

/// @p s as a single-precision number; 0 for what is no number or beyond single precision.
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
