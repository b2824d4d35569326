// SPDX-FileCopyrightText: Aerolith developers
// Displayed names, columns, wrapped lines.
#include "cli/shown.h"
#include "support/testmain.h"

#include <QTest>

using namespace Qt::StringLiterals;

class CliTexts : public QObject {
    Q_OBJECT

private slots:
    void names_data() {
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<QByteArray>("expected");
        const auto row = [](const char* name, const QByteArray& bytes, const QByteArray& expected) {
            QTest::newRow(name) << bytes << expected;
        };
        row("empty", "", "");
        row("plain", "wing 1.dat", "wing 1.dat");
        row("backslash", "a\\x41", "a\\x41");
        row("umlaut", "fl\xc3\xbcgel", "fl\xc3\xbcgel");
        row("four-bytes", "\xf0\x9f\xaa\x82", "\xf0\x9f\xaa\x82");
        row("line-feed", "a\nb", "a\\x0Ab");
        row("escape", "\x1b[2J", "\\x1B[2J");
        row("delete", "\x7f", "\\x7F");
        row("null", QByteArray("a\0b", 3), "a\\x00b");
        row("c1",
            "\xc2\x9b"
            "5m",
            "\\xC2\\x9B5m");
        row("line-separator", "\xe2\x80\xa8", "\\xE2\\x80\\xA8");
        row("right-to-left",
            "\xe2\x80\xae"
            "x",
            "\\xE2\\x80\\xAEx");
        row("isolate", "\xe2\x81\xa6", "\\xE2\\x81\\xA6");
        row("latin-1", "fl\xfcgel", "fl\\xFCgel");
        row("cut-short", "\xc3", "\\xC3");
        row("cut-short-three", "\xe2\x80", "\\xE2\\x80");
        row("overlong", "\xc0\xaf", "\\xC0\\xAF");
        row("overlong-three", "\xe0\x80\xaf", "\\xE0\\x80\\xAF");
        row("surrogate", "\xed\xa0\x80", "\\xED\\xA0\\x80");
        row("beyond", "\xf4\x90\x80\x80", "\\xF4\\x90\\x80\\x80");
        row("stray-continuation", "\x80", "\\x80");
    }
    void names() {
        QFETCH(const QByteArray, bytes);
        QFETCH(const QByteArray, expected);
        const std::string text = cli::shown(bytes.toStdString());
        QCOMPARE(QByteArray::fromStdString(text), expected);
    }

    void columns() {
        QCOMPARE(cli::column("\xc3\xbc", 3), std::string("\xc3\xbc  "));
        QCOMPARE(cli::column("four", 3), std::string("four"));
        QCOMPARE(cli::right_column("12", 4), std::string("  12"));
    }

    void lines_data() {
        QTest::addColumn<QString>("text");
        QTest::addColumn<int>("width");
        QTest::addColumn<int>("indent");
        QTest::addColumn<QString>("expected");
        QTest::newRow("empty") << u""_s << 20 << 0 << u""_s;
        QTest::newRow("fits") << u"ten words"_s << 20 << 2 << u"  ten words\n"_s;
        QTest::newRow("just-fits") << u"abcde fghi"_s << 10 << 0 << u"abcde fghi\n"_s;
        QTest::newRow("broken") << u"abcde fghij"_s << 10 << 0 << u"abcde\nfghij\n"_s;
        QTest::newRow("long-word")
            << u"a abcdefghijklmno b"_s << 10 << 0 << u"a\nabcdefghijklmno\nb\n"_s;
        QTest::newRow("no-room") << u"abcde fghij"_s << 3 << 2 << u"  abcde\n  fghij\n"_s;
        QTest::newRow("line-feeds") << u"a\n\nb"_s << 10 << 1 << u" a\n\n b\n"_s;
    }
    void lines() {
        QFETCH(const QString, text);
        QFETCH(const int, width);
        QFETCH(const int, indent);
        QFETCH(const QString, expected);
        QCOMPARE(QString::fromStdString(cli::wrapped(text.toStdString(), width, indent)), expected);
    }
};

AEROLITH_GUILESS_TEST_MAIN(CliTexts)
#include "tst_cli_texts.moc"
