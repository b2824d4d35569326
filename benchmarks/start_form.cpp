// SPDX-FileCopyrightText: Aerolith developers
// A window with the program's form but no function, up to its first finished paint.
#include "firstpaint.h"

#include "ui_bareform.h"

#include <QMainWindow>
#include <QScreen>

int main(int argc, char* argv[]) {
    FirstPaint application(argc, argv);
    QMainWindow window;
    Ui::main_window form;
    form.setupUi(&window);
    window.setWindowFlags(Qt::FramelessWindowHint);
    application.watched = &window;
    window.resize(application.primaryScreen()->availableGeometry().size());
    window.showMaximized();
    return FirstPaint::exec();
}
