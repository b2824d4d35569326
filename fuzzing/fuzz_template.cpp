// SPDX-FileCopyrightText: Aerolith developers
// Any bytes as a coordinate table: read as the template, listed in the pane and painted.
#include "airfoil/airfoil.h"
#include "app/mainwindow.h"
#include "fuzzing/fuzzing.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    static MainWindow window;
    window.spline_widget->resize(200, 100);
    window.spline_widget->Init_widget();

    const QByteArray bytes(reinterpret_cast<const char*>(data), qsizetype(size));
    const MemoryFile file(bytes);
    ParaStruct* const document = window.p;
    document->baseAirfoilName = QString::fromUtf8(bytes.left(64));
    document->baseAirfoil = airfoil_Read(file.name());
    REQUIRE(within_chord(document->baseAirfoil));
    REQUIRE(document->baseAirfoil.size() <= 2 * (qsizetype(size) + 1));
    REQUIRE(identical(airfoil_Read(file.name()), document->baseAirfoil));

    window.Write_BaseTable(document->baseAirfoil);
    const QString table = window.tableEdit->toPlainText();
    REQUIRE(table.startsWith(QLatin1String(" airfoil table \t\n \t\n1.00000   0.00000 \t\n")));
    REQUIRE(table.endsWith(QLatin1String("\n1.00000   0.00000 \t\n")));
    REQUIRE(table.count(QLatin1Char('\n')) <= document->baseAirfoil.size() + 4);

    paint(window.spline_widget);
    // The second picture is made from what the first one has cached.
    paint(window.spline_widget);
    return 0;
}
