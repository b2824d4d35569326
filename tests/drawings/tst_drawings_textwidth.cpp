// SPDX-FileCopyrightText: Aerolith developers
// The room that texts take, texts shortened to fit it, and patterns that are filled.
#include "drawings/paint_p.h"
#include "drawings/rib.h"
#include "drawings/textwidth_p.h"
#include "support/testmain.h"

#include <QFontMetricsF>

using namespace drawings;

class tst_drawings_textwidth : public QObject {
    Q_OBJECT
private slots:
    void widths_of_the_font();
    void shortened_data();
    void shortened();
    void filled_data();
    void filled();
};

// No character of the font is wider than assumed.
void tst_drawings_textwidth::widths_of_the_font() {
    const std::optional<QFont> font = fixed_font();
    QVERIFY2(font, qPrintable(missing_font()));
    const QFontMetricsF metrics(*font);
    int known = 0;
    for (char32_t c = 0x20; c < 0x20000; ++c) {
        if ((c >= 0x7f && c < 0xa0) || QChar::isSurrogate(c) || !metrics.inFontUcs4(c))
            continue;
        ++known;
        const QString text = QString::fromUcs4(&c, 1);
        const double assumed = width_of(text, 729.0);
        const double real = metrics.horizontalAdvance(text);
        QVERIFY2(real <= assumed + 0.6, qPrintable(QStringLiteral("U+%1 is %2, assumed %3")
                                                       .arg(uint(c), 4, 16)
                                                       .arg(real)
                                                       .arg(assumed)));
        if (c < 0x7f)
            QVERIFY(real > assumed - 0.6);
    }
    QVERIFY2(known > 5000, qPrintable(QString::number(known)));
}

void tst_drawings_textwidth::shortened_data() {
    QTest::addColumn<QString>("text");
    QTest::addColumn<double>("width");
    QTest::addColumn<QString>("wanted");
    const QString digits = QStringLiteral("0123456789");
    const double digit = 636.0 / 729.0;
    const double dots = 1750.0 / 729.0; // the ellipsis
    QTest::newRow("fits") << digits << 10.0 * digit + 1e-9 << digits;
    QTest::newRow("middle") << digits << 4.0 * digit + dots + 1e-9 << QStringLiteral(u"01…89");
    QTest::newRow("odd") << digits << 5.0 * digit + dots + 1e-9 << QStringLiteral(u"012…89");
    QTest::newRow("no room") << digits << 1.0 << QStringLiteral(u"…");
    QTest::newRow("empty") << QString() << 0.0 << QString();
    QTest::newRow("pairs stay whole")
        << QStringLiteral(u"🪂🪂🪂") << 2.0 * dots + 1e-9 << QStringLiteral(u"🪂…");
}

void tst_drawings_textwidth::shortened() {
    QFETCH(QString, text);
    QFETCH(double, width);
    QTEST(drawings::shortened(text, 1.0, width), "wanted");
}

void tst_drawings_textwidth::filled_data() {
    QTest::addColumn<QString>("pattern");
    QTest::addColumn<QString>("expected");
    QTest::newRow("none") << "Rib"
                          << "Rib";
    QTest::newRow("all") << "{name} {chord} {n}/4"
                         << "a{n} 2850.123 3/4";
    QTest::newRow("unknown") << "{other} {"
                             << "{other} {";
}

void tst_drawings_textwidth::filled() {
    QFETCH(QString, pattern);
    QTEST(filled_text(pattern, QStringLiteral("a{n}"), 2850.12345, 3), "expected");
}

AEROLITH_TEST_MAIN(tst_drawings_textwidth)
#include "tst_drawings_textwidth.moc"
