// SPDX-FileCopyrightText: Aerolith developers
// Listing a template in the table pane.
#include "airfoil/airfoil.h"
#include "app/mainwindow.h"
#include "baseline/scene.h"
#include "harness.h"

#include <QCoreApplication>

void bench_table() {
    MainWindow window;
    window.resize(1280, 800);
    window.show();
    QCoreApplication::processEvents();
    const QPolygonF outline = baseline::smooth_outline(1000, 0.12);
    window.Write_BaseTable(outline);
    const QString text = window.tableEdit->toPlainText();

    const Work ours = {[&] { window.Write_BaseTable(outline); }, 8};
    const Work alone = {[&] { window.tableEdit->setText(text); }, 8};
    const Comparison result = compare(31, ours, alone);
    print_row(QStringLiteral("10"),
              QStringLiteral("table pane of 1000 rows, whole : setText alone"),
              times_text(result.first, result.second), {Goal::at_most, 1.1}, result.ratio);
}
