// SPDX-FileCopyrightText: Aerolith developers
// The program up to its first finished paint.
#include "app/mainwindow.h"
#include "firstpaint.h"

#include <QScreen>

int main(int argc, char* argv[]) {
    FirstPaint application(argc, argv);
    MainWindow window;
    application.watched = &window;
    window.resize(application.primaryScreen()->availableGeometry().size());
    window.showMaximized();
    return FirstPaint::exec();
}
