// SPDX-FileCopyrightText: Aerolith developers
// What the fuzz targets share.
#include "fuzzing/fuzzing.h"

#include <QApplication>
#include <QImage>
#include <QPainter>

#include <cstring>
#include <ctime>

#include <sys/mman.h>
#include <unistd.h>

extern "C" int LLVMFuzzerInitialize(int* argc, char*** argv) {
    ::setenv("QT_QPA_PLATFORM", "offscreen", 0);
    static QApplication application(*argc, *argv);
    // Otherwise there would be an endless series of warnings, one for each item of a missing file.
    qInstallMessageHandler([](QtMsgType type, const QMessageLogContext&, const QString& text) {
        if (type == QtFatalMsg)
            std::fprintf(stderr, "%s\n", qPrintable(text));
    });
    return 0;
}

MemoryFile::MemoryFile(const QByteArray& bytes) : fd(::memfd_create("fuzz", MFD_CLOEXEC)) {
    REQUIRE(fd >= 0);
    REQUIRE(::write(fd, bytes.constData(), size_t(bytes.size())) == bytes.size());
}

MemoryFile::~MemoryFile() {
    ::close(fd);
}

QString MemoryFile::name() const {
    return QStringLiteral("/proc/self/fd/%1").arg(fd);
}

void paint(QWidget* widget) {
    QImage image(widget->size(), QImage::Format_ARGB32_Premultiplied);
    const std::clock_t begin = std::clock();
    widget->render(&image, QPoint(), QRegion(), QWidget::RenderFlags());
    REQUIRE(std::clock() - begin < 5 * CLOCKS_PER_SEC);
}

bool within_chord(const QPolygonF& outline) {
    for (const QPointF& point : outline) {
        if (point.x() < 0.0 || point.x() > 1.0)
            return false;
    }
    return true;
}

bool identical(const QPolygonF& a, const QPolygonF& b) {
    return a.size() == b.size() &&
           (a.isEmpty() ||
            std::memcmp(a.constData(), b.constData(), size_t(a.size()) * sizeof a[0]) == 0);
}
