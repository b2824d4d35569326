// SPDX-FileCopyrightText: Aerolith developers
// Starts the editor.
#include "app/mainwindow.h"

#include <QApplication>
#include <QScreen>

int main(int argc, char* argv[]) {
    QApplication application(argc, argv);
    // Desktops find the program's icon by this name.
    QGuiApplication::setDesktopFileName(QStringLiteral("org.kavrund.Aerolith"));
    MainWindow window;
    // Without a window manager a maximised window would keep its size.
    window.resize(application.primaryScreen()->availableGeometry().size());
    window.showMaximized();
    return QApplication::exec();
}
