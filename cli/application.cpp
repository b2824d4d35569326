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
    // Hides warnings about folders that only a desktop has.
    const QtMessageHandler before =
        qInstallMessageHandler([](QtMsgType, const QMessageLogContext&, const QString&) {});
    // Never deleted: at the end of the process its fonts are destroyed first.
    static const auto* const application = new QGuiApplication(count, names);
    Q_UNUSED(application)
    qInstallMessageHandler(before);
}

} // namespace cli
