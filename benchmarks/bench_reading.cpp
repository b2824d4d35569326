// SPDX-FileCopyrightText: Aerolith developers
// Reading a long coordinate table.
#include "airfoil/airfoil.h"
#include "baseline/reader.h"
#include "harness.h"

#include <QFile>
#include <QProcess>
#include <QTemporaryDir>

#include <cmath>
#include <cstring>

namespace {

constexpr int row_count = 1000000;

void write_table(const QString& name) {
    QFile file(name);
    if (!file.open(QIODevice::WriteOnly))
        return;
    for (int i = 0; i < row_count; ++i) {
        const double x = 0.5 + 0.5 * std::cos(1e-6 * i);
        const double y = 0.06 * std::sin(7e-6 * i);
        file.write(QByteArray("  ") + QByteArray::number(x, 'f', 6) + "  " +
                   QByteArray::number(y, 'f', 6) + "\n");
    }
}

// One reading by the script's interpreter, alternating with ours.
double loadtxt_seconds(QProcess& script) {
    if (!script.waitForReadyRead(120000))
        return 0.0;
    return script.readLine().trimmed().toDouble();
}

void compare_with_numpy(const QString& name) {
    const QString work = QStringLiteral("the same, ours : numpy.loadtxt");
    std::vector<double> ratios;
    std::vector<double> ours;
    std::vector<double> theirs;
    for (int round = 0; round < 5; ++round) {
        QProcess script;
        script.start(QStringLiteral("/usr/bin/python3"),
                     {QStringLiteral(BENCH_LOADTXT), name, QStringLiteral("1")});
        const double numpy_time = loadtxt_seconds(script);
        script.waitForFinished(-1);
        if (!(numpy_time > 0.0)) {
            print_note(QStringLiteral("9"), work, QStringLiteral("no python3 with numpy"));
            return;
        }
        theirs.push_back(numpy_time);
        ours.push_back(timed([&] { keep(Read_Normal(name).last().x()); }));
        ratios.push_back(ours.back() / numpy_time);
    }
    print_row(QStringLiteral("9"), work,
              times_text(quartiles(ours).median, quartiles(theirs).median), {Goal::at_most, 1.0},
              quartiles(ratios));
}

} // namespace

void bench_reading() {
    const QTemporaryDir folder;
    const QString name = folder.filePath(QStringLiteral("long.dat"));
    write_table(name);

    QPolygonF expected;
    QPolygonF actual;
    const Comparison result = compare(5, {[&] { expected = baseline::Read_Normal(name); }, 1},
                                      {[&] { actual = Read_Normal(name); }, 1});
    print_row(QStringLiteral("9"), QStringLiteral("Read_Normal, 1,000,000 rows, plain : ours"),
              times_text(result.first, result.second), {Goal::at_least, 20.0}, result.ratio);
    const bool same = actual.size() == row_count && expected.size() == row_count &&
                      std::memcmp(actual.constData(), expected.constData(),
                                  std::size_t(row_count) * sizeof(QPointF)) == 0;
    print_note(QStringLiteral("9"), QStringLiteral("the same points, to the bit"),
               same ? QStringLiteral("met") : QStringLiteral("MISSED"));
    compare_with_numpy(name);
}
