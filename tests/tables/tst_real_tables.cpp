// SPDX-FileCopyrightText: Aerolith developers
// Tables of other programs, compared with a list of what each file contains, which was made by
// inspection. AEROLITH_TABLES is the folder of the files.
#include "airfoil/airfoil.h"
#include "support/testmain.h"
#include "tables/table.h"
#include "tables/write.h"

#include <QDir>
#include <QFile>
#include <QTest>

#include <algorithm>
#include <cmath>

namespace {

QByteArray content(const QString& name) {
    QFile file(name);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

struct Extreme {
    double value;
    double x;
};

// The height of greatest @p sign times y, and its station.
Extreme extreme(const QPolygonF& points, double sign) {
    const auto below = [sign](QPointF a, QPointF b) { return sign * a.y() < sign * b.y(); };
    const QPointF found = *std::max_element(points.begin(), points.end(), below);
    return {found.y(), found.x()};
}

// The list holds five decimals of what has been read.
bool agree(double a, double b) {
    return std::abs(a - b) < 1.01e-5;
}

// An outline in the frame of the window, beginning at its rightmost end.
QPolygonF in_window_frame(QPolygonF points) {
    if (points.last().x() > points.first().x())
        std::reverse(points.begin(), points.end());
    const auto [least, greatest] = std::minmax_element(
        points.begin(), points.end(), [](QPointF a, QPointF b) { return a.x() < b.x(); });
    const double width = greatest->x() - least->x();
    const QPointF first = points.first();
    for (QPointF& point : points)
        point = QPointF((point.x() - first.x()) / width + 1.0, (point.y() - first.y()) / width);
    return points;
}

} // namespace

class tst_real_tables : public QObject {
    Q_OBJECT

private slots:
    void reading_data();
    void reading();
    void window_shows_what_is_meant_data();
    void window_shows_what_is_meant();

private:
    void add_rows();

    const QString folder = qEnvironmentVariable("AEROLITH_TABLES");
};

void tst_real_tables::add_rows() {
    QTest::addColumn<QStringList>("row");
    QFile file(QStringLiteral(REAL_TABLES));
    QVERIFY(file.open(QIODevice::ReadOnly));
    bool is_named = false;
    while (!file.atEnd()) {
        const QString line = QString::fromUtf8(file.readLine()).chopped(1);
        if (line.startsWith(QLatin1Char('#')))
            continue;
        const QStringList row = line.split(QLatin1Char('\t'));
        QCOMPARE(row.size(), 15);
        if (is_named)
            QTest::newRow(qPrintable(row[0])) << row;
        is_named = true;
    }
}

void tst_real_tables::reading_data() {
    add_rows();
}

void tst_real_tables::reading() {
    if (folder.isEmpty())
        QSKIP("AEROLITH_TABLES names no folder.");
    QFETCH(QStringList, row);
    const QByteArray bytes = content(QDir(folder).filePath(row[0]));
    QVERIFY(!bytes.isEmpty());
    const tables::Table table = tables::read(bytes);
    const QStringList verdicts = row[12].split(QLatin1Char('|'));
    const QString verdict = table.readable()             ? QStringLiteral("read")
                            : table.candidates.isEmpty() ? QStringLiteral("refuse")
                                                         : QStringLiteral("ask");
    QString said;
    for (const tables::Finding& finding : table.findings)
        said += QStringLiteral("\n%1: %2").arg(finding.line).arg(finding.text);
    QVERIFY2(verdicts.contains(verdict), qPrintable(verdict + said));
    if (!table.readable()) {
        QVERIFY(!said.isEmpty());
        return;
    }
    const QStringList counts = row[4].split(QLatin1Char('|'));
    QVERIFY2(counts.contains(QString::number(table.points.size())),
             qPrintable(QString::number(table.points.size()) + said));
    const Extreme top = extreme(table.points, 1.0);
    const Extreme bottom = extreme(table.points, -1.0);
    QVERIFY2(agree(top.value, row[7].toDouble()), qPrintable(QString::number(top.value) + said));
    QVERIFY2(agree(bottom.value, row[9].toDouble()),
             qPrintable(QString::number(bottom.value) + said));
    QVERIFY2(agree(table.points.first().x(), row[11].toDouble()),
             qPrintable(QString::number(table.points.first().x()) + said));
}

void tst_real_tables::window_shows_what_is_meant_data() {
    add_rows();
}

// The window's reader gives the same outline for what is written for it.
void tst_real_tables::window_shows_what_is_meant() {
    if (folder.isEmpty())
        QSKIP("AEROLITH_TABLES names no folder.");
    QFETCH(QStringList, row);
    const tables::Table table = tables::read(content(QDir(folder).filePath(row[0])));
    if (!table.readable())
        return;
    const tables::Written written = tables::write(table, tables::Format::window);
    QVERIFY2(written.ok(), qPrintable(written.findings.value(0).text));
    const QPolygonF shown = airfoil_Read_Bytes(written.bytes);
    const QPolygonF meant = in_window_frame(table.points);
    QCOMPARE(shown.size(), meant.size());
    double largest = 0.0;
    for (qsizetype i = 0; i < meant.size(); ++i)
        largest = std::max(largest, (shown[i] - meant[i]).manhattanLength());
    // Single precision, twice.
    QVERIFY2(largest < 1e-6, qPrintable(QString::number(largest)));
}

AEROLITH_GUILESS_TEST_MAIN(tst_real_tables)
#include "tst_real_tables.moc"
