// SPDX-FileCopyrightText: Aerolith developers
// An application that ends with the first finished paint of a window.
#pragma once

#include <QApplication>

/// Ends the process as soon as the event that painted the watched window has been handled, and
/// prints the processor time (seconds) and the peak memory (kB) since its start.
class FirstPaint : public QApplication {
public:
    using QApplication::QApplication;

    QObject* watched = nullptr;

    bool notify(QObject* receiver, QEvent* event) override;

private:
    int depth = 0;
    bool painted = false;
};
