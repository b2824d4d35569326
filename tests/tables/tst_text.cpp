// SPDX-FileCopyrightText: Aerolith developers
// Bytes to text: encodings, line ends, end-of-file characters.
#include "support/testmain.h"
#include "tables/text_p.h"

#include <QStringEncoder>
#include <QTest>

using namespace tables;

namespace {

QByteArray encoded(const QString& text, QStringConverter::Encoding encoding, bool mark) {
    QStringEncoder encoder(encoding, mark ? QStringConverter::Flag::WriteBom
                                          : QStringConverter::Flag::Default);
    return encoder.encode(text);
}

} // namespace

class tst_text : public QObject {
    Q_OBJECT
private slots:
    void decoded_data();
    void decoded();
    void too_large();
    void end_of_file_character();
    void lines_data();
    void lines();
    void shown();
};

void tst_text::decoded_data() {
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QByteArray>("utf8");

    const QString text = QStringLiteral("SCH\u00dcTTE\n1.0 0.0\n");
    const QByteArray utf8 = text.toUtf8();
    QTest::newRow("empty") << QByteArray() << QByteArray();
    QTest::newRow("UTF-8") << utf8 << utf8;
    QTest::newRow("UTF-8 with a mark") << "\xEF\xBB\xBF" + utf8 << utf8;
    QTest::newRow("Latin-1") << text.toLatin1() << utf8;
    using Converter = QStringConverter;
    QTest::newRow("UTF-16 LE, mark") << encoded(text, Converter::Utf16LE, true) << utf8;
    QTest::newRow("UTF-16 BE, mark") << encoded(text, Converter::Utf16BE, true) << utf8;
    QTest::newRow("UTF-16 LE") << encoded(text, Converter::Utf16LE, false) << utf8;
    QTest::newRow("UTF-16 BE") << encoded(text, Converter::Utf16BE, false) << utf8;
    QTest::newRow("UTF-32 LE, mark") << encoded(text, Converter::Utf32LE, true) << utf8;
    QTest::newRow("UTF-32 BE, mark") << encoded(text, Converter::Utf32BE, true) << utf8;
    QTest::newRow("no-break space, minus")
        << QStringLiteral("0.5\u00a0\u22120.1").toUtf8() << QByteArray("0.5 -0.1");
    QTest::newRow("zeros at the end") << QByteArray("1 0\n\0\0", 6) << QByteArray("1 0\n");
    QTest::newRow("DOS end") << QByteArray("1 0\n\x1a") << QByteArray("1 0\n");
}

void tst_text::decoded() {
    QFETCH(const QByteArray, bytes);
    QFETCH(const QByteArray, utf8);

    const Text text = tables::decoded(bytes);

    QCOMPARE(text.utf8, utf8);
    QVERIFY(text.findings.isEmpty());
}

void tst_text::too_large() {
    const Text text = tables::decoded(QByteArray(most_bytes + 1, '1'));
    QCOMPARE(text.findings.size(), 1);
    QCOMPARE(text.findings[0].gravity, Gravity::error);
    QVERIFY(text.utf8.isEmpty());
    QVERIFY(tables::decoded(QByteArray(most_bytes, '1')).findings.isEmpty());
}

void tst_text::end_of_file_character() {
    const Text text = tables::decoded("1 0\n0 0\n\x1a rest of a sector");
    QCOMPARE(text.utf8, QByteArray("1 0\n0 0\n"));
    QCOMPARE(text.findings.size(), 1);
    QCOMPARE(text.findings[0].gravity, Gravity::note);
    QCOMPARE(text.findings[0].line, 3);
}

void tst_text::lines_data() {
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<QByteArrayList>("lines");

    const QByteArrayList three = {"a", "", "b"};
    QTest::newRow("LF") << QByteArray("a\n\nb") << three;
    QTest::newRow("CR LF") << QByteArray("a\r\n\r\nb\r\n") << three;
    QTest::newRow("CR") << QByteArray("a\r\rb\r") << three;
    QTest::newRow("mixed") << QByteArray("a\n\rb\r\n") << three;
    QTest::newRow("none") << QByteArray() << QByteArrayList();
}

void tst_text::lines() {
    QFETCH(const QByteArray, text);
    QFETCH(const QByteArrayList, lines);

    QByteArrayList taken;
    QByteArrayView rest = text;
    while (!rest.isEmpty())
        taken.append(take_line(rest).toByteArray());
    QCOMPARE(taken, lines);
}

void tst_text::shown() {
    QCOMPARE(tables::shown("\t1.0\x1b[31m 0.0 "), QStringLiteral("1.0 [31m 0.0"));
    QCOMPARE(tables::shown(QByteArray(5000, 'x')).size(), 200);
}

AEROLITH_GUILESS_TEST_MAIN(tst_text)
#include "tst_text.moc"
