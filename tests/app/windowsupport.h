// SPDX-FileCopyrightText: Aerolith developers
// What the tests of the main window share: a fresh document, paints counted, texts of
// the translation recorded, and files and rows made apart from the program.
#pragma once

#include "app/mainwindow.h"

#include <QByteArray>
#include <QList>
#include <QObject>
#include <QPair>
#include <QRegion>
#include <QString>
#include <QTest>
#include <QTranslator>

#include <functional>

/// Gives the document its start values: it outlives the windows of a test program.
void renew_document();

/// Paints the editor until the spline has come to rest on the chord. The window must
/// be on screen.
void settle(MainWindow& window);

/// Shows a window and waits until it is ready for input.
#define SHOW(window)                                                                               \
    (window).show();                                                                               \
    QVERIFY(QTest::qWaitForWindowActive(&(window)));                                               \
    QCoreApplication::processEvents()

/// Counts the paint events of a widget while it lives; those that come while a
/// condition holds, if there is one.
class PaintCount : public QObject {
public:
    explicit PaintCount(QWidget* widget, std::function<bool()> condition = {});

    int count() const { return paints; }

    /// How many of them covered the whole widget.
    int whole() const { return whole_paints; }

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    std::function<bool()> counted;
    int paints = 0;
    int whole_paints = 0;
};

/// Writes down every text that passes through translation while it lives, and
/// puts the texts of one context between brackets.
class RecordingTranslator : public QTranslator {
public:
    explicit RecordingTranslator(const QByteArray& context);
    ~RecordingTranslator() override;

    bool isEmpty() const override { return false; }
    QString translate(const char* context, const char* source, const char* disambiguation,
                      int n) const override;

    /// Pairs of context and text, in the order of the calls.
    mutable QList<QPair<QByteArray, QByteArray>> calls;

private:
    QByteArray bracketed;
};

/// The bytes of a spline file, put together number by number.
QByteArray spline_file_bytes(const SplineFoil& spline);

/// One row of a coordinate table.
QString table_row(double x, double y);

/// A spline in which every field that files carry has its own value.
SplineFoil distinct_spline();

/// Writes @p bytes to a new file; false if that fails.
bool make_file(const QString& name, const QByteArray& bytes);

/// The whole content of a file; a null array if there is none.
QByteArray file_bytes(const QString& name);
