// SPDX-FileCopyrightText: Aerolith developers
// All of this folder that needs widgets.
#include "airfoil/airfoil.h"

#include "airfoil/airfoil_p.h"
#include "numerics/transform.h"

#include <QMessageBox>
#include <QTextEdit>

void warn_no_airfoil() {
    QMessageBox box;
    box.setText(QStringLiteral("Airfoil not present yet - IMPORT first"));
    box.exec();
}

void FillPolygon(QPolygonF poly, QTextEdit* edit) {
    edit->clear();
    for (const QPointF& point : std::as_const(poly))
        edit->append(R_out6(point.x()) + QStringLiteral("  ") + R_out6(point.y()));
}
