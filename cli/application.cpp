// SPDX-FileCopyrightText: Aerolith developers
#include "cli/application.h"

#include <QGuiApplication>

namespace cli {

void make_application() {
    if (QCoreApplication::instance())
        return;
    qputenv("QT_QPA_PLATFORM", "offscreen");
    static int count = 1;
    static char name[] = "aerolith-cli";
    static char* names[] = {name, nullptr};
    // What it says of folders that a desktop would have is of no use here.
    const QtMessageHandler before =
        qInstallMessageHandler([](QtMsgType, const QMessageLogContext&, const QString&) {});
    // Never deleted: at the end of the process its fonts are gone before it.
    static const auto* const application = new QGuiApplication(count, names);
    Q_UNUSED(application)
    qInstallMessageHandler(before);
}

} // namespace cli
