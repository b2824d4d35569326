// SPDX-FileCopyrightText: Aerolith developers
// The opening fields and the table pane.
#include "app/mainwindow.h"

#include "airfoil/airfoil.h"

#include <QCoreApplication>
#include <QFocusEvent>
#include <QLocale>
#include <QPolygonF>
#include <QSignalBlocker>
#include <QString>

namespace {

// The number in a field, in the user's locale or else in the C locale; 0 for none.
double number(const QString& text) {
    QLocale locale;
    locale.setNumberOptions(QLocale::RejectGroupSeparator);
    bool ok = false;
    double value = locale.toDouble(text, &ok);
    if (!ok)
        value = text.toDouble(&ok);
    return ok ? value : 0.0;
}

// Each paragraph takes the pane some 150 bytes. In long tables only every 64th row begins one; what
// is shown, copied and read back is the same.
QString with_few_paragraphs(QString table) {
    constexpr qsizetype long_table = 1'000'000;
    constexpr int rows_of_a_paragraph = 64;
    if (table.size() < long_table)
        return table;
    int row = 0;
    for (QChar& c : table) {
        if (c == QLatin1Char('\n') && ++row % rows_of_a_paragraph != 0)
            c = QChar::LineSeparator;
    }
    return table;
}

// QLineEdit treats a text set by the program as edited, and emits editingFinished() when the field
// loses the focus. Sending that event once clears the state.
void mark_unedited(QLineEdit* field) {
    const QSignalBlocker unheard(field);
    QFocusEvent leaving(QEvent::FocusOut);
    QCoreApplication::sendEvent(field, &leaving);
}

} // namespace

void MainWindow::mark_openings_unedited() {
    mark_unedited(O1Edit);
    mark_unedited(O2Edit);
}

void MainWindow::setupEditO1_O2() {
    const auto two_decimals = [](double value) {
        return QStringLiteral("%1").arg(value, 0, 'f', 2, QLatin1Char(' '));
    };
    O1Edit->setText(two_decimals(p->spline.startVent));
    O2Edit->setText(two_decimals(p->spline.endVent));
    mark_openings_unedited();
}

void MainWindow::change_O1_O2() {
    p->spline.startVent = number(O1Edit->text());
    p->spline.endVent = number(O2Edit->text());
}

void MainWindow::on_O1Edit_editingFinished() {
    change_O1_O2();
}

void MainWindow::on_O2Edit_editingFinished() {
    change_O1_O2();
}

void MainWindow::Write_BaseTable(QPolygonF poly) {
    // The title line ends like a row, as in airfoil_table().
    const QString outname = QStringLiteral(" airfoil table \t\n");
    tableEdit->clear();
    tableEdit->setText(with_few_paragraphs(airfoil_table(outname, poly, 1)));
    update();
}
