// SPDX-FileCopyrightText: Aerolith developers
// The reader, the thickness and the table against a second, independent program, for all files in a
// folder. AEROLITH_TABLES=<folder> adds another folder.
#include "airfoil/airfoil.h"
#include "support/awkwardtables.h"
#include "support/tablegenerator.h"
#include "support/testmain.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>
#include <QUrl>

#include <cmath>
#include <cstring>

namespace {

QByteArray bits(double value) {
    if (std::isnan(value))
        return "nan";
    quint64 pattern = 0;
    std::memcpy(&pattern, &value, sizeof pattern);
    return QByteArray::number(pattern, 16).rightJustified(16, '0');
}

// Sorted by the bytes of their paths, as in the second program.
QStringList files_below(const QString& folder) {
    QStringList names;
    QDirIterator it(folder, QDir::Files | QDir::Hidden, QDirIterator::Subdirectories);
    while (it.hasNext())
        names += QDir(folder).relativeFilePath(it.next());
    std::sort(names.begin(), names.end());
    return names;
}

QList<QByteArray> description(const QString& folder, const QString& name) {
    const QString path = folder + QLatin1Char('/') + name;
    QPolygonF outline = airfoil_Read(path);
    QString texts[2];
    FindThickness(&outline, texts);
    QList<QByteArray> lines = {
        "file " + QUrl::toPercentEncoding(name, "/"),
        "raw " + QByteArray::number(airfoil_Read_All(path).size()),
        "points " + QByteArray::number(outline.size()),
        "size " + texts[0].toUtf8(),
        "crests " + texts[1].toUtf8(),
    };
    for (const QPointF& point : std::as_const(outline))
        lines += "p " + bits(point.x()) + ' ' + bits(point.y());
    const QString table = airfoil_table(QString(), outline, 1);
    QList<QByteArray> rows = table.toUtf8().replace('\t', "\\t").split('\n');
    rows.removeFirst();
    rows.removeLast();
    for (const QByteArray& row : std::as_const(rows))
        lines += "row " + row;
    return lines;
}

bool write_generated_tables(const QString& folder) {
    const TableKind kinds[] = {TableKind::Clean, TableKind::Decorated, TableKind::Dirty,
                               TableKind::Noise, TableKind::Wide};
    for (quint32 seed = 0; seed < 200; ++seed) {
        QFile file(folder + QLatin1Char('/') + QString::number(seed));
        const QByteArray bytes = generated_table(kinds[seed % 5], 77000 + seed, 25);
        if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size())
            return false;
    }
    return true;
}

} // namespace

class tst_second_reader : public QObject {
    Q_OBJECT
private slots:
    void folder_data();
    void folder();
};

void tst_second_reader::folder_data() {
    QTest::addColumn<QString>("name");
    QTest::addColumn<int>("least_outlines");

    QTest::newRow("samples") << QStringLiteral(SAMPLES) << 7;
    QTest::newRow("awkward") << QStringLiteral("awkward") << 70;
    QTest::newRow("generated") << QStringLiteral("generated") << 60;
    // A folder of real tables, if there is one.
    if (qEnvironmentVariableIsSet("AEROLITH_TABLES"))
        QTest::newRow("given") << qEnvironmentVariable("AEROLITH_TABLES") << 1;
}

void tst_second_reader::folder() {
    QFETCH(QString, name);
    QFETCH(int, least_outlines);
    QTemporaryDir made;
    if (name == QLatin1String("awkward") || name == QLatin1String("generated")) {
        QVERIFY(name == QLatin1String("awkward") ? write_awkward_tables(made.path())
                                                 : write_generated_tables(made.path()));
        name = made.path();
    }
    const QStringList files = files_below(name);
    QVERIFY(!files.isEmpty());

    QProcess second;
    second.start(QStringLiteral(PYTHON), {QStringLiteral(SECOND_READER), name});
    QVERIFY(second.waitForFinished(120000));
    QCOMPARE(second.readAllStandardError(), QByteArray());
    QCOMPARE(second.exitCode(), 0);
    QList<QByteArray> expected = second.readAllStandardOutput().split('\n');
    expected.removeLast();

    qsizetype next = 0;
    int outlines = 0;
    for (const QString& file : files) {
        const QList<QByteArray> lines = description(name, file);
        for (const QByteArray& line : lines) {
            QVERIFY2(line == expected.value(next),
                     qPrintable(file + QStringLiteral(": ") + QString::fromUtf8(line) +
                                QStringLiteral(" is not ") +
                                QString::fromUtf8(expected.value(next))));
            ++next;
        }
        outlines += lines[2] == "points 0" ? 0 : 1;
    }
    QCOMPARE(next, expected.size());
    QVERIFY2(outlines >= least_outlines, qPrintable(QString::number(outlines)));
    qInfo("%d files, %d outlines", int(files.size()), outlines);
}

AEROLITH_GUILESS_TEST_MAIN(tst_second_reader)
#include "tst_second_reader.moc"
