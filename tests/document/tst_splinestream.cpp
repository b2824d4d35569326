// SPDX-FileCopyrightText: Aerolith developers
// The bytes of spline files: written, read, truncated and hostile.
#include "baseline/splinebytes.h"
#include "document/splinebytes.h"
#include "filledrecords.h"
#include "support/exactcompare.h"
#include "support/testmain.h"

#include <QDataStream>
#include <QIODevice>

#include <algorithm>
#include <cstring>
#include <iterator>
#include <limits>

namespace {

const double infinity = std::numeric_limits<double>::infinity();
const int least_int = std::numeric_limits<int>::min();
const int greatest_int = std::numeric_limits<int>::max();

double from_bits(quint64 bits) {
    double value = 0.0;
    std::memcpy(&value, &bits, sizeof value);
    return value;
}

QString differing_byte(const QByteArray& actual, const QByteArray& expected) {
    if (actual.size() != expected.size())
        return QStringLiteral("%1 bytes, not %2").arg(actual.size()).arg(expected.size());
    for (qsizetype i = 0; i < actual.size(); ++i)
        if (actual[i] != expected[i])
            return QStringLiteral("byte %1: %2 is not %3")
                .arg(i)
                .arg(int(uchar(actual[i])), 2, 16)
                .arg(int(uchar(expected[i])), 2, 16);
    return {};
}

} // namespace

class tst_splinestream : public QObject {
    Q_OBJECT

private slots:
    void bytes_by_hand();
    void bytes_of_names_data();
    void bytes_of_names();
    void bytes_of_integers_data();
    void bytes_of_integers();
    void bytes_of_numbers_data();
    void bytes_of_numbers();
    void bytes_of_empty_spline();
    void bytes_of_filled_spline();

    void read_by_hand();
    void read_keeps_the_rest();
    void read_names_data();
    void read_names();
    void read_numbers_data();
    void read_numbers();
    void read_raw_counts_data();
    void read_raw_counts();
    void read_two_in_a_row();
    void read_short_at_every_byte();
    void read_odd_name_lengths_data();
    void read_odd_name_lengths();
    void read_foreign_data();
    void read_foreign();
    void operators_answer_their_stream();
};

// The first and last bytes as literals, so that the table itself is pinned.
void tst_splinestream::bytes_by_hand() {
    ParaStruct record;
    record.spline.airfoilName = QStringLiteral("/tmp/a.spl");
    record.spline.num_pnt = 5;
    record.spline.num_knt = 8;
    record.spline.b_knots[0] = 1.0;
    record.spline.b_knots[299] = -0.0;
    record.spline.CP[0] = QPointF(2.0, -2.0);
    record.spline.rd_CP[0] = QPointF(0.5, 0.25);
    record.spline.CP[1] = QPointF(3.0, 4.0);
    record.spline.startVent = 10.0;
    record.spline.endVent = 20.0;
    record.spline.L_T_S = 30.0;
    const QByteArray bytes = spline_bytes(record);
    QCOMPARE(int(bytes.size()), 3404 + 20);
    QCOMPARE(bytes.left(24).toHex(), QByteArray("00000014"
                                                "002f0074006d0070002f0061002e00730070006c"));
    QCOMPARE(bytes.mid(24, 24).toHex(), QByteArray("00000005000000080000000200000003"
                                                   "3ff0000000000000"));
    QCOMPARE(bytes.mid(40 + 2392, 56).toHex(), QByteArray("8000000000000000"
                                                          "4000000000000000c000000000000000"
                                                          "3fe00000000000003fd0000000000000"
                                                          "40080000000000004010000000000000"));
    QCOMPARE(bytes.right(24).toHex(), QByteArray("4024000000000000"
                                                 "4034000000000000"
                                                 "403e000000000000"));
    QCOMPARE(differing_byte(bytes, baseline::spline_bytes(record.spline)), QString());
}

void tst_splinestream::bytes_of_names_data() {
    QTest::addColumn<QString>("name");
    QTest::addColumn<QByteArray>("hex");

    QTest::newRow("null") << QString() << QByteArray("ffffffff");
    QTest::newRow("empty") << QStringLiteral("") << QByteArray("00000000");
    QTest::newRow("one-letter") << QStringLiteral("a") << QByteArray("000000020061");
    QTest::newRow("blank") << QStringLiteral(" ") << QByteArray("000000020020");
    QTest::newRow("umlaut") << QStringLiteral("\u00fc") << QByteArray("0000000200fc");
    QTest::newRow("beyond-16-bits")
        << QStringLiteral("\U0001F6E9") << QByteArray("00000004d83ddee9");
    QTest::newRow("half-a-pair") << QString(QChar(0xd83d)) << QByteArray("00000002d83d");
    QTest::newRow("byte-order-mark") << QString(QChar(0xfeff)) << QByteArray("00000002feff");
    QTest::newRow("zero-character") << QString(QChar(u'\0')) << QByteArray("000000020000");
    QTest::newRow("percent-one") << QStringLiteral("%1") << QByteArray("0000000400250031");
}

void tst_splinestream::bytes_of_names() {
    QFETCH(QString, name);
    QFETCH(QByteArray, hex);
    ParaStruct record;
    record.spline.airfoilName = name;
    const QByteArray bytes = spline_bytes(record);
    QCOMPARE(bytes.left(bytes.size() - 3400).toHex(), hex);
    QCOMPARE(int(bytes.size()), 3404 + 2 * int(name.size()));
}

void tst_splinestream::bytes_of_integers_data() {
    QTest::addColumn<int>("value");
    QTest::addColumn<QByteArray>("hex");

    QTest::newRow("five") << 5 << QByteArray("00000005");
    QTest::newRow("minus-one") << -1 << QByteArray("ffffffff");
    QTest::newRow("all-bytes") << 0x01020304 << QByteArray("01020304");
    QTest::newRow("least") << least_int << QByteArray("80000000");
    QTest::newRow("greatest") << greatest_int << QByteArray("7fffffff");
}

void tst_splinestream::bytes_of_integers() {
    QFETCH(int, value);
    QFETCH(QByteArray, hex);
    int SplineFoil::*const members[] = {&SplineFoil::num_pnt, &SplineFoil::num_knt,
                                        &SplineFoil::degree, &SplineFoil::order};
    for (int i = 0; i < 4; ++i) {
        ParaStruct record;
        record.spline.*members[i] = value;
        QCOMPARE(spline_bytes(record).mid(4 + 4 * i, 4).toHex(), hex);
    }
}

void tst_splinestream::bytes_of_numbers_data() {
    QTest::addColumn<quint64>("bits");

    const auto row = [](const char* tag, quint64 bits) { QTest::newRow(tag) << bits; };
    row("zero", 0);
    row("minus-zero", 0x8000000000000000u);
    row("all-bytes", 0x0102030405060708u);
    row("infinite", 0x7ff0000000000000u);
    row("minus-infinite", 0xfff0000000000000u);
    row("nan", 0x7ff8000000000000u);
    row("nan-with-payload", 0x7ff8dead0000beefu);
    row("minus-nan-with-payload", 0xfff8123456789abcu);
    row("signalling-nan", 0x7ff0000000000001u);
    row("least", 0x0000000000000001u);
}

// Every number keeps all its bits when written and read.
void tst_splinestream::bytes_of_numbers() {
    QFETCH(quint64, bits);
    const double value = from_bits(bits);
    QByteArray eight;
    baseline::put_bytes(eight, bits, 8);
    for (int place = 0; place < 423; ++place) {
        QByteArray bytes = baseline::spline_bytes(SplineFoil());
        bytes.replace(20 + 8 * place, 8, eight);
        ParaStruct record;
        read_spline_bytes(bytes, record);
        QCOMPARE(differing_byte(spline_bytes(record), bytes), QString());
        const SplineFoil& spline = record.spline;
        double there = 0.0;
        if (place < 300) {
            there = spline.b_knots[place];
        } else if (place < 420) {
            const int point = (place - 300) / 4;
            const QPointF pair[] = {spline.CP[point], spline.rd_CP[point]};
            const QPointF which = pair[(place - 300) % 4 / 2];
            there = place % 2 ? which.y() : which.x();
        } else {
            const double rest[] = {spline.startVent, spline.endVent, spline.L_T_S};
            there = rest[place - 420];
        }
        COMPARE_BITS(there, value);
    }
}

void tst_splinestream::bytes_of_empty_spline() {
    ParaStruct record;
    QCOMPARE(int(spline_bytes(record).size()), 3404);
    record.spline.airfoilName = QStringLiteral("/somewhere/of/a/person/a.spl");
    record.spline.init_knots();
    QCOMPARE(int(spline_bytes(record).size()), 3404 + 2 * 28);
    QCOMPARE(differing_byte(spline_bytes(record), baseline::spline_bytes(record.spline)),
             QString());
}

void tst_splinestream::bytes_of_filled_spline() {
    for (int seed = 1; seed < 6; ++seed) {
        const ParaStruct record = filled_record(seed);
        QCOMPARE(differing_byte(spline_bytes(record), baseline::spline_bytes(record.spline)),
                 QString());
        ParaStruct other = filled_record(seed + 1);
        other.spline = record.spline;
        QCOMPARE(differing_byte(spline_bytes(other), spline_bytes(record)), QString());
    }
}

void tst_splinestream::read_by_hand() {
    const SplineFoil source = filled_spline(1);
    ParaStruct record;
    read_spline_bytes(baseline::spline_bytes(source), record);
    SplineFoil expected = source;
    std::fill(std::begin(expected.b_multi_knot), std::end(expected.b_multi_knot), 0);
    QCOMPARE(different_member(record.spline, expected), QString());
}

void tst_splinestream::read_keeps_the_rest() {
    const ParaStruct before = filled_record(2);
    ParaStruct record = before;
    read_spline_bytes(baseline::spline_bytes(filled_spline(1)), record);
    ParaStruct expected = before;
    expected.spline = filled_spline(1);
    std::copy(std::begin(before.spline.b_multi_knot), std::end(before.spline.b_multi_knot),
              std::begin(expected.spline.b_multi_knot));
    QCOMPARE(different_member(record, expected), QString());
}

void tst_splinestream::read_names_data() {
    bytes_of_names_data();
}

void tst_splinestream::read_names() {
    QFETCH(QString, name);
    QFETCH(QByteArray, hex);
    ParaStruct record = filled_record(1);
    read_spline_bytes(
        QByteArray::fromHex(hex) + baseline::spline_bytes(filled_spline(2)).right(3400), record);
    QCOMPARE(record.spline.airfoilName, name);
    QCOMPARE(record.spline.airfoilName.isNull(), name.isNull());
    QCOMPARE(record.spline.num_pnt, 9);
    COMPARE_BITS(record.spline.L_T_S, 2.375);
}

void tst_splinestream::read_numbers_data() {
    QTest::addColumn<double>("value");
    QTest::newRow("infinite") << infinity;
    QTest::newRow("greatest") << std::numeric_limits<double>::max();
    QTest::newRow("nan") << std::numeric_limits<double>::quiet_NaN();
}

// Numbers that give no drawable curve are loaded anyway, and can be sampled.
void tst_splinestream::read_numbers() {
    QFETCH(double, value);
    SplineFoil source = zigzag(6);
    source.CP[2].setX(value);
    source.b_knots[4] = value;
    ParaStruct record;
    read_spline_bytes(baseline::spline_bytes(source), record);
    COMPARE_BITS(record.spline.CP[2].x(), value);
    COMPARE_BITS(record.spline.b_knots[4], value);
    QCOMPARE(int(record.spline.make_SplinePoly().size()), 999);
}

void tst_splinestream::read_raw_counts_data() {
    QTest::addColumn<int>("points");
    QTest::addColumn<int>("knots");
    QTest::addColumn<int>("degree");

    const int values[] = {least_int, -1, 0, 1, 31, 301, 1000000, greatest_int};
    for (const int points : values)
        for (const int knots : values)
            QTest::addRow("points-%d-knots-%d", points, knots) << points << knots << 2;
    for (const int degree : {least_int, -1, 0, 1, 5, 6, 270, 300, greatest_int})
        QTest::addRow("degree-%d", degree) << 30 << 33 << degree;
}

// Kept as stored, bit for bit through another file, while every use is bounded.
void tst_splinestream::read_raw_counts() {
    QFETCH(int, points);
    QFETCH(int, knots);
    QFETCH(int, degree);
    SplineFoil source = filled_spline(1);
    source.num_pnt = points;
    source.num_knt = knots;
    source.degree = degree;
    source.order = least_int;
    const QByteArray bytes = baseline::spline_bytes(source);
    ParaStruct record;
    read_spline_bytes(bytes, record);
    SplineFoil& spline = record.spline;
    QCOMPARE(spline.num_pnt, points);
    QCOMPARE(spline.num_knt, knots);
    QCOMPARE(spline.degree, degree);
    QCOMPARE(spline.order, least_int);
    QVERIFY(spline.point_count() >= 0 && spline.point_count() <= MAXNUMPOINTS);
    QVERIFY(spline.knot_count() >= 0 && spline.knot_count() <= MAXNUMKNOTS);
    const bool curve = points > 0 && degree >= 0 && degree <= 5;
    QCOMPARE(spline.has_curve(), curve);
    QCOMPARE(int(spline.make_SplinePoly().size()), curve ? 999 : 0);
    QCOMPARE(differing_byte(spline_bytes(record), bytes), QString());
}

void tst_splinestream::read_two_in_a_row() {
    const QByteArray bytes =
        baseline::spline_bytes(filled_spline(1)) + baseline::spline_bytes(filled_spline(2)) + "x";
    QDataStream stream(bytes);
    stream.setVersion(QDataStream::Qt_4_6);
    ParaStruct first;
    ParaStruct second;
    stream >> first >> second;
    QCOMPARE(stream.status(), QDataStream::Ok);
    QCOMPARE(first.spline.airfoilName, filled_spline(1).airfoilName);
    QCOMPARE(second.spline.airfoilName, filled_spline(2).airfoilName);
    COMPARE_BITS(second.spline.L_T_S, 2.375);
    QVERIFY(!stream.atEnd());
    quint8 rest = 0;
    stream >> rest;
    QCOMPARE(rest, quint8('x'));
    QVERIFY(stream.atEnd());
}

// Complete items are read, missing ones are 0.
void tst_splinestream::read_short_at_every_byte() {
    SplineFoil source = filled_spline(1);
    source.airfoilName = QStringLiteral("name.spl");
    const QByteArray bytes = baseline::spline_bytes(source);
    const int name_end = 4 + 16;
    for (int length = 0; length < bytes.size(); ++length) {
        ParaStruct record = filled_record(2);
        QDataStream stream(bytes.left(length));
        stream.setVersion(QDataStream::Qt_4_6);
        stream >> record;
        QCOMPARE(stream.status(), QDataStream::ReadPastEnd);

        const bool name_there = length >= name_end;
        QVERIFY(name_there || record.spline.airfoilName.isEmpty());
        QByteArray whole_items = bytes.left(name_there ? name_end : 4);
        if (name_there) {
            const int rest = length - name_end;
            whole_items += bytes.mid(name_end, rest < 16 ? rest / 4 * 4 : rest / 8 * 8);
        } else {
            whole_items = QByteArray(4, '\0');
        }
        const QByteArray zeros(3400, '\0');
        const QByteArray expected = (whole_items + zeros).left((name_there ? name_end : 4) + 3400);
        record.spline.airfoilName = name_there ? record.spline.airfoilName : QStringLiteral("");
        const QString difference = differing_byte(spline_bytes(record), expected);
        QVERIFY2(difference.isEmpty(),
                 qPrintable(QStringLiteral("cut at %1: %2").arg(length).arg(difference)));
    }
}

void tst_splinestream::read_odd_name_lengths_data() {
    QTest::addColumn<quint32>("length");
    QTest::addColumn<bool>("goes_on");

    QTest::newRow("one") << 1u << true;
    QTest::newRow("three") << 3u << true;
    QTest::newRow("odd-and-too-long") << 0x00ffffffu << true;
    QTest::newRow("odd-and-greatest") << 0x7fffffffu << true;
    QTest::newRow("odd-beyond-int") << 0xfffffffdu << true;
    QTest::newRow("even-and-too-long") << 0x00fffffeu << false;
    QTest::newRow("even-and-greatest") << 0x7ffffffeu << false;
    QTest::newRow("sign-bit") << 0x80000000u << false;
    QTest::newRow("just-below-null") << 0xfffffffeu << false;
}

// An odd length means no text, and the items follow immediately; an even length greater than the
// file consumes the rest.
void tst_splinestream::read_odd_name_lengths() {
    QFETCH(quint32, length);
    QFETCH(bool, goes_on);
    QByteArray bytes;
    baseline::put_bytes(bytes, length, 4);
    bytes += baseline::spline_bytes(filled_spline(1)).right(3400);
    const ParaStruct before = filled_record(2);
    ParaStruct record = before;
    read_spline_bytes(bytes, record);
    QVERIFY(record.spline.airfoilName.isEmpty());
    record.spline.airfoilName.clear();
    ParaStruct expected = nothing_read(before);
    if (goes_on) {
        const SplineFoil kept = expected.spline;
        expected.spline = filled_spline(1);
        expected.spline.airfoilName.clear();
        std::copy(std::begin(kept.b_multi_knot), std::end(kept.b_multi_knot),
                  std::begin(expected.spline.b_multi_knot));
    }
    QCOMPARE(different_member(record, expected), QString());
}

void tst_splinestream::read_foreign_data() {
    QTest::addColumn<QByteArray>("bytes");

    QTest::newRow("empty") << QByteArray();
    QTest::newRow("one-byte") << QByteArray(1, '\x7f');
    QTest::newRow("text") << QByteArray("NACA 0012\n 1.00000  0.00126\n 0.95000  0.00807\n");
    QTest::newRow("long-text") << QByteArray("1.00000  0.00126\r\n").repeated(1000);
    QTest::newRow("zeros") << QByteArray(5000, '\0');
    QTest::newRow("ones") << QByteArray(5000, '\xff');
    QTest::newRow("minus-ones") << QByteArray(4, '\xff') + QByteArray(3400, '\x80');
    QTest::newRow("picture") << QByteArray("\x89PNG\r\n\x1a\n") + QByteArray(4000, '\x55');
}

void tst_splinestream::read_foreign() {
    QFETCH(QByteArray, bytes);
    const ParaStruct before = filled_record(1);
    ParaStruct record = before;
    read_spline_bytes(bytes, record);
    QVERIFY(record.spline.point_count() <= MAXNUMPOINTS);
    const qsizetype samples = record.spline.make_SplinePoly().size();
    QVERIFY(samples == 0 || samples == 999);
    record.spline.init_knots();
    record.spline = before.spline;
    QCOMPARE(different_member(record, before), QString());
}

void tst_splinestream::operators_answer_their_stream() {
    QByteArray bytes;
    QDataStream out(&bytes, QIODevice::WriteOnly);
    ParaStruct record;
    QCOMPARE(&(out << record), &out);
    QDataStream in(bytes);
    QCOMPARE(&(in >> record), &in);
}

AEROLITH_GUILESS_TEST_MAIN(tst_splinestream)
#include "tst_splinestream.moc"
