// SPDX-FileCopyrightText: Aerolith developers
// Helpers shared by the tests of the main window: a fresh document, counting of paints, recording
// of translated texts, and files and rows made independently of the program.
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

/// Resets the document to its initial values: it outlives the windows of a test program.
void renew_document();

/// Paints the editor until the spline has settled on the chord. The window must be on screen.
void settle(MainWindow& window);

/// Shows a window and waits until it is ready for input.
#define SHOW(window)                                                                               \
    (window).show();                                                                               \
    QVERIFY(QTest::qWaitForWindowActive(&(window)));                                               \
    QCoreApplication::processEvents()

/// Counts the paint events of a widget during its lifetime; with a condition, only those during
/// which it holds.
class PaintCount : public QObject {
public:
    explicit PaintCount(QWidget* widget, std::function<bool()> condition = {});

    int count() const { return paints; }

    /// The number of paints that covered the whole widget.
    int whole() const { return whole_paints; }

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    std::function<bool()> counted;
    int paints = 0;
    int whole_paints = 0;
};

/// Records every text that is translated during its lifetime, and puts the texts of one context in
/// brackets.
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

/// One row of a coordinate table.
QString table_row(double x, double y);

/// A spline in which every field stored in files has a distinct value.
SplineFoil distinct_spline();

/// Writes @p bytes to a new file; false if that fails.
bool make_file(const QString& name, const QByteArray& bytes);

/// The content of a file; a null array if there is no such file.
QByteArray file_bytes(const QString& name);
