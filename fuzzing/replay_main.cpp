// SPDX-FileCopyrightText: Aerolith developers
// Runs a fuzz target on the files, and on all files in the folders, named as arguments.
#include "fuzzing/fuzzing.h"

#include <QDirIterator>
#include <QFile>
#include <QFileInfo>

int main(int argc, char* argv[]) {
    LLVMFuzzerInitialize(&argc, &argv);
    int inputs = 0;
    const auto run = [&](const QString& name) {
        QFile file(name);
        REQUIRE(file.open(QIODevice::ReadOnly));
        const QByteArray bytes = file.readAll();
        std::printf("%s\n", qPrintable(name));
        std::fflush(stdout);
        LLVMFuzzerTestOneInput(reinterpret_cast<const uint8_t*>(bytes.constData()),
                               size_t(bytes.size()));
        ++inputs;
    };
    for (int i = 1; i < argc; ++i) {
        const QString name = QString::fromLocal8Bit(argv[i]);
        if (!QFileInfo(name).isDir()) {
            run(name);
            continue;
        }
        QDirIterator files(name, QDir::Files);
        while (files.hasNext())
            run(files.next());
    }
    std::printf("%d inputs\n", inputs);
    return inputs > 0 ? 0 : 1;
}
