// SPDX-FileCopyrightText: Aerolith developers
// Reads a spline file and writes it again as the window does, with one control point moved.
// Usage: rewrite_spline IN OUT INDEX X Y; an index of -1 moves none.
#include "document/parastruct.h"
#include "document/readfile.h"
#include "document/splinebytes.h"

#include <QFile>

#include <cstdlib>

int main(int count, char** words) {
    if (count != 6)
        return EXIT_FAILURE;
    ParaStruct para;
    read_spline_bytes(read_file(QString::fromLocal8Bit(words[1])), para);
    const int index = std::atoi(words[3]);
    if (index >= para.spline.point_count())
        return EXIT_FAILURE;
    if (index >= 0)
        para.spline.CP[index] = QPointF(std::atof(words[4]), std::atof(words[5]));
    QFile file(QString::fromLocal8Bit(words[2]));
    const QByteArray bytes = spline_bytes(para);
    return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size() ? EXIT_SUCCESS
                                                                                : EXIT_FAILURE;
}
