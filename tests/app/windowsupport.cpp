// SPDX-FileCopyrightText: Aerolith developers
// Helpers shared by the tests of the main window.
#include "windowsupport.h"

#include <QCoreApplication>
#include <QEvent>
#include <QFile>
#include <QPaintEvent>

#include <utility>

void renew_document() {
    *GetDataStruct() = ParaStruct();
}

void settle(MainWindow& window) {
    for (int paints = 0; paints < 6; ++paints)
        window.spline_widget->repaint();
}

PaintCount::PaintCount(QWidget* widget, std::function<bool()> condition)
    : counted(std::move(condition)) {
    widget->installEventFilter(this);
}

bool PaintCount::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::Paint && (!counted || counted())) {
        ++paints;
        const QRegion region = static_cast<QPaintEvent*>(event)->region();
        if (region == QRegion(static_cast<QWidget*>(watched)->rect()))
            ++whole_paints;
    }
    return false;
}

RecordingTranslator::RecordingTranslator(const QByteArray& context) : bracketed(context) {
    QCoreApplication::installTranslator(this);
}

RecordingTranslator::~RecordingTranslator() {
    QCoreApplication::removeTranslator(this);
}

QString RecordingTranslator::translate(const char* context, const char* source,
                                       const char* /*disambiguation*/, int /*n*/) const {
    calls.append(qMakePair(QByteArray(context), QByteArray(source)));
    if (bracketed != context)
        return QString();
    return QLatin1Char('[') + QString::fromUtf8(source) + QLatin1Char(']');
}

QString table_row(double x, double y) {
    return QString::number(x, 'f', 5).rightJustified(7) + QStringLiteral("   ") +
           QString::number(y, 'f', 5).rightJustified(7) + QStringLiteral(" \t\n");
}

SplineFoil distinct_spline() {
    SplineFoil spline;
    spline.airfoilName = QStringLiteral("/before/section.spl");
    spline.num_pnt = 5;
    spline.num_knt = 8;
    spline.degree = 2;
    spline.order = 3;
    for (int i = 0; i < 300; ++i)
        spline.b_knots[i] = i * 0.0625 + 0.0001 * i * i;
    for (int i = 0; i < 30; ++i) {
        spline.CP[i] = QPointF(500.0 - 40.0 * i + 0.1 * i, 200.0 + 7.3 * (i % 4));
        spline.rd_CP[i] = QPointF(-0.3 * i, 1000.0 / (i + 1));
    }
    spline.startVent = 12.5;
    spline.endVent = 33.3;
    spline.L_T_S = -7.25;
    return spline;
}

bool make_file(const QString& name, const QByteArray& bytes) {
    QFile file(name);
    return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size() && file.flush();
}

QByteArray file_bytes(const QString& name) {
    QFile file(name);
    if (!file.open(QIODevice::ReadOnly))
        return QByteArray();
    const QByteArray bytes = file.readAll();
    return bytes.isNull() ? QByteArray("") : bytes;
}
