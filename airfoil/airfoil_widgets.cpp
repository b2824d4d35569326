// SPDX-FileCopyrightText: Aerolith developers
// The functions on outlines that need widgets.
#include "airfoil/airfoil.h"

#include "numerics/transform.h"

#include <QTextEdit>

#include <utility>

void FillPolygon(QPolygonF poly, QTextEdit* edit) {
    edit->clear();
    for (const QPointF& point : std::as_const(poly))
        edit->append(R_out6(point.x()) + QStringLiteral("  ") + R_out6(point.y()));
}
