// SPDX-FileCopyrightText: Aerolith developers
// What the fuzz targets share. Each target is a function that takes any bytes and ends the process
// if a property that must hold for every input does not.
#pragma once

#include <QByteArray>
#include <QPolygonF>
#include <QString>
#include <QWidget>

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>

extern "C" int LLVMFuzzerInitialize(int* argc, char*** argv);
extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size);

/// Ends the process unless @p condition holds.
#define REQUIRE(condition)                                                                         \
    do {                                                                                           \
        if (!(condition)) {                                                                        \
            std::fprintf(stderr, "%s:%d: %s does not hold\n", __FILE__, __LINE__, #condition);     \
            std::abort();                                                                          \
        }                                                                                          \
    } while (false)

/// A file in memory that holds @p bytes during the lifetime of the object.
class MemoryFile {
public:
    explicit MemoryFile(const QByteArray& bytes);
    MemoryFile(const MemoryFile&) = delete;
    MemoryFile& operator=(const MemoryFile&) = delete;
    ~MemoryFile();

    QString name() const; ///< The name under which it can be opened.

private:
    int fd;
};

/// Paints @p widget and requires less than five seconds of processor time, even with sanitizers.
void paint(QWidget* widget);

/// Whether every point of a normalised outline is in 0..1 or not a number.
bool within_chord(const QPolygonF& outline);

/// Whether both have the same bits.
bool identical(const QPolygonF& a, const QPolygonF& b);
