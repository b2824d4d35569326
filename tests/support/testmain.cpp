// SPDX-FileCopyrightText: Aerolith developers
// Expected warnings, and the environment of a test process.
#include "support/testmain.h"

namespace {

ExpectedWarnings* innermost = nullptr;

} // namespace

ExpectedWarnings::ExpectedWarnings(const QString& text)
    : wanted(text), outer(innermost), previous(qInstallMessageHandler(handle)) {
    innermost = this;
}

ExpectedWarnings::~ExpectedWarnings() {
    innermost = outer;
    qInstallMessageHandler(previous);
}

void ExpectedWarnings::handle(QtMsgType type, const QMessageLogContext& context,
                              const QString& message) {
    ExpectedWarnings* outermost = innermost;
    for (ExpectedWarnings* it = innermost; it; it = it->outer) {
        if (type == QtWarningMsg && message.contains(it->wanted)) {
            ++it->came;
            return;
        }
        outermost = it;
    }
    outermost->previous(type, context, message);
}

TestProcess::TestProcess() {
    qputenv("HOME", home.path().toLocal8Bit());
    qputenv("XDG_CONFIG_HOME", home.filePath(QStringLiteral(".config")).toLocal8Bit());
    QCoreApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
    QCoreApplication::setAttribute(Qt::AA_Use96Dpi);
}
