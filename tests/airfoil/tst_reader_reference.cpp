// SPDX-FileCopyrightText: Aerolith developers
// The reader against its plain version: the same bits from the same bytes, whatever the bytes are.
#include "airfoil/airfoil.h"
#include "baseline/reader.h"
#include "support/awkwardtables.h"
#include "support/exactcompare.h"
#include "support/tablegenerator.h"
#include "support/testmain.h"

#include <QFile>
#include <QRandomGenerator>
#include <QTemporaryDir>
#include <QTest>

namespace {

// Where the two readers disagree; empty if they agree.
QString disagreement(const QString& name) {
    using Reader = QPolygonF (*)(QString);
    using Expected = QPolygonF (*)(const QString&);
    struct Pair {
        const char* name;
        Reader reader;
        Expected expected;
    };
    const Pair pairs[] = {
        {"Read_Normal", Read_Normal, baseline::Read_Normal},
        {"Read_Symetric", Read_Symetric, baseline::Read_Symetric},
        {"Read_Eppler", Read_Eppler, baseline::Read_Eppler},
        {"airfoil_Read_All", airfoil_Read_All, baseline::airfoil_Read_All},
        {"airfoil_Read", airfoil_Read, baseline::airfoil_Read},
    };
    for (const Pair& pair : pairs) {
        const QString difference = first_difference(pair.reader(name), pair.expected(name));
        if (!difference.isEmpty())
            return QLatin1String(pair.name) + QStringLiteral(": ") + difference;
    }
    const QString text = FoilText_Read(name);
    const QString expected = baseline::FoilText_Read(name);
    if (text == expected)
        return {};
    qsizetype i = 0;
    while (i < qMin(text.size(), expected.size()) && text[i] == expected[i])
        ++i;
    return QStringLiteral("FoilText_Read: %1 and %2 characters, from character %3 on: ")
               .arg(text.size())
               .arg(expected.size())
               .arg(i) +
           QString::fromLatin1(text.mid(i, 40).toUtf8().toPercentEncoding()) +
           QStringLiteral(" is not ") +
           QString::fromLatin1(expected.mid(i, 40).toUtf8().toPercentEncoding());
}

} // namespace

class tst_reader_reference : public QObject {
    Q_OBJECT
private slots:
    void initTestCase();
    void layouts_are_met();
    void generated_data();
    void generated();
    void catalogue_data();
    void catalogue();
    void short_files_data();
    void short_files();
    void truncated_at_every_byte();
    void no_file_data();
    void no_file();
    void strings();
    void text_in_memory();

private:
    QString stored(const QByteArray& bytes);

    QTemporaryDir m_folder;
    int m_files = 0;
};

void tst_reader_reference::initTestCase() {
    QVERIFY(m_folder.isValid());
}

// Each table is a new file: file systems flush a file that is truncated and rewritten at once,
// which takes longer than all the reading.
QString tst_reader_reference::stored(const QByteArray& bytes) {
    QFile::remove(m_folder.filePath(QString::number(m_files)));
    QFile file(m_folder.filePath(QString::number(++m_files)));
    if (!file.open(QIODevice::WriteOnly | QIODevice::NewOnly) || file.write(bytes) != bytes.size())
        return {};
    return file.fileName();
}

// The generated tables must include every layout, or only empty outlines would be compared.
void tst_reader_reference::layouts_are_met() {
    int full[3] = {};
    for (quint32 seed = 0; seed < 60; ++seed) {
        const QString name = stored(generated_table(TableKind::Decorated, seed, 20));
        const QPolygonF outline = baseline::airfoil_Read_All(name);
        const QPolygonF layouts[] = {baseline::Read_Symetric(name), baseline::Read_Normal(name),
                                     baseline::Read_Eppler(name)};
        for (int i = 0; i < 3; ++i)
            full[i] += outline.size() > 10 && same_bits(outline, layouts[i]) ? 1 : 0;
    }
    QVERIFY2(full[0] > 2 && full[1] > 2 && full[2] > 2,
             qPrintable(QStringLiteral("%1 %2 %3").arg(full[0]).arg(full[1]).arg(full[2])));
}

void tst_reader_reference::generated_data() {
    QTest::addColumn<TableKind>("kind");
    QTest::addColumn<quint32>("seed");
    QTest::addColumn<int>("files");
    QTest::addColumn<int>("rows");

    QTest::newRow("clean-small") << TableKind::Clean << 1000U << 100 << 30;
    QTest::newRow("clean-large") << TableKind::Clean << 2000U << 4 << 5000;
    QTest::newRow("decorated-small") << TableKind::Decorated << 3000U << 300 << 30;
    QTest::newRow("decorated-large") << TableKind::Decorated << 4000U << 6 << 5000;
    QTest::newRow("dirty-tiny") << TableKind::Dirty << 5000U << 1500 << 4;
    QTest::newRow("dirty-small") << TableKind::Dirty << 8000U << 300 << 40;
    QTest::newRow("dirty-large") << TableKind::Dirty << 9000U << 8 << 4000;
    QTest::newRow("noise-tiny") << TableKind::Noise << 10000U << 500 << 3;
    QTest::newRow("noise-large") << TableKind::Noise << 11000U << 6 << 4000;
    QTest::newRow("wide-small") << TableKind::Wide << 12000U << 200 << 20;
    QTest::newRow("wide-large") << TableKind::Wide << 13000U << 6 << 3000;
}

void tst_reader_reference::generated() {
    QFETCH(TableKind, kind);
    QFETCH(quint32, seed);
    QFETCH(int, files);
    QFETCH(int, rows);
    for (int i = 0; i < files; ++i) {
        const QByteArray bytes = generated_table(kind, seed + quint32(i), rows);
        const QString name = stored(bytes);
        QVERIFY(!name.isEmpty());
        const QString difference = disagreement(name);
        if (!difference.isEmpty() && bytes.size() < 400)
            qWarning("%s", bytes.toPercentEncoding(" ").constData());
        QVERIFY2(difference.isEmpty(),
                 qPrintable(QStringLiteral("seed %1: %2").arg(seed + quint32(i)).arg(difference)));
    }
}

void tst_reader_reference::catalogue_data() {
    QTest::addColumn<QByteArray>("bytes");

    for (const AwkwardTable& table : awkward_tables())
        QTest::newRow(table.name) << table.bytes;
}

void tst_reader_reference::catalogue() {
    QFETCH(QByteArray, bytes);
    const QString name = stored(bytes);
    QVERIFY(!name.isEmpty());
    const QString difference = disagreement(name);
    QVERIFY2(difference.isEmpty(), qPrintable(difference));
}

void tst_reader_reference::short_files_data() {
    QTest::addColumn<QByteArray>("bytes");

    QTest::newRow("empty") << QByteArray();
    QTest::newRow("one-line-feed") << QByteArray("\n");
    QTest::newRow("one-carriage-return") << QByteArray("\r");
    QTest::newRow("mark-alone") << QByteArray("\xef\xbb\xbf");
    QTest::newRow("half-a-mark") << QByteArray("\xef\xbb");
    QTest::newRow("utf-16-mark-alone") << QByteArray("\xff\xfe");
    QTest::newRow("one-nul") << QByteArray(1, '\0');
    QTest::newRow("two-rows") << QByteArray("1. 0.\n0.5 0.1\n");
    QTest::newRow("two-rows-and-a-return") << QByteArray("1. 0.\n0.5 0.1\n\r");
    QTest::newRow("two-rows-and-a-title") << QByteArray("1. 0.\n0.5 0.1\nend");
    QTest::newRow("two-rows-no-newline") << QByteArray("1. 0.\n0.5 0.1");
    QTest::newRow("two-rows-and-an-empty-line") << QByteArray("1. 0.\n0.5 0.1\n\n");
    QTest::newRow("three-rows-no-newline") << QByteArray("1. 0.\n0.5 0.1\n0.0 0.0");
    QTest::newRow("last-character-a-point") << QByteArray("1. 0.\n0. 0.\n1.0 0.\n");
    QTest::newRow("half-contour-of-three") << QByteArray("a\n\n\n\n2. 2.\n0.0 0.0\n1.0 0.1\n");
    QTest::newRow("cut-character") << QByteArray("1. 0.\n0.5 0.1\n0.0 0.0\xe2\x82");
}

void tst_reader_reference::short_files() {
    QFETCH(QByteArray, bytes);
    const QString name = stored(bytes);
    QVERIFY(!name.isEmpty());
    const QString difference = disagreement(name);
    QVERIFY2(difference.isEmpty(), qPrintable(difference));
}

void tst_reader_reference::truncated_at_every_byte() {
    const QByteArray bytes = "\xef\xbb\xbf"
                             "R\xc3\xbc"
                             "cken \xc2\xab"
                             "9\xc2\xbb\r\n\r\n \t61,\t61,\r\n"
                             "\r\n0,0 0,0\r\n.25;  -,05\r\n1.0 \xe2\x82\xac .002 .7 8\r\n\"1.5 0.1";
    for (qsizetype size = 0; size <= bytes.size(); ++size) {
        const QString name = stored(bytes.left(size));
        QVERIFY(!name.isEmpty());
        const QString difference = disagreement(name);
        QVERIFY2(difference.isEmpty(),
                 qPrintable(QStringLiteral("%1 bytes: %2").arg(size).arg(difference)));
    }
}

void tst_reader_reference::no_file_data() {
    QTest::addColumn<QString>("name");

    QTest::newRow("missing") << m_folder.filePath(QStringLiteral("missing.dat"));
    QTest::newRow("folder") << m_folder.path();
}

void tst_reader_reference::no_file() {
    QFETCH(QString, name);
    const QString difference = disagreement(name);
    QVERIFY2(difference.isEmpty(), qPrintable(difference));
    QVERIFY(airfoil_Read(name).isEmpty());
}

void tst_reader_reference::strings() {
    QRandomGenerator random(20);
    for (int i = 0; i < 20000; ++i) {
        const QByteArray bytes = generated_pieces(random, 8);
        const QString line = QString::fromUtf8(bytes);
        QCOMPARE(clean(line), baseline::clean(line));
        QCOMPARE(isLatString(line), baseline::isLatString(line));
        QCOMPARE(Repair_NumString(line), baseline::Repair_NumString(line));
        QString fields[3] = {QStringLiteral("a"), QStringLiteral("b"), QStringLiteral("c")};
        QString expected[3];
        FindNumericSubStrings(line, fields);
        baseline::FindNumericSubStrings(line, expected);
        for (int k = 0; k < 3; ++k)
            QCOMPARE(fields[k], expected[k]);
    }
}

void tst_reader_reference::text_in_memory() {
    QRandomGenerator random(21);
    for (int i = 0; i < 3000; ++i) {
        QByteArray bytes;
        for (int line = int(random.bounded(12)); line > 0; --line)
            bytes += generated_pieces(random, 10) + (random.bounded(4) == 0 ? "\r\n" : "\n");
        if (random.bounded(3) == 0)
            bytes.chop(1);
        const QString text = QString::fromUtf8(bytes);
        const QString difference =
            first_difference(plainTextRead(text), baseline::plainTextRead(text));
        QVERIFY2(difference.isEmpty(),
                 qPrintable(difference + QLatin1Char(' ') +
                            QString::fromLatin1(bytes.toPercentEncoding(" "))));
    }
}

AEROLITH_GUILESS_TEST_MAIN(tst_reader_reference)
#include "tst_reader_reference.moc"
