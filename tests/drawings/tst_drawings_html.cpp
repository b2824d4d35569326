// SPDX-FileCopyrightText: Aerolith developers
// The HTML page and its small pictures. The tests of the program include a browser.
#include "drawings/html.h"
#include "support/testmain.h"

#include <QRegularExpression>
#include <QTest>

#include <cmath>
#include <limits>

using namespace drawings;

namespace {

QPolygonF wave(int count) {
    QPolygonF points;
    for (int i = 0; i < count; ++i)
        points << QPointF(double(i) / (count - 1), 0.1 * std::sin(0.02 * i));
    return points;
}

double distance_from(const QPolygonF& line, QPointF p) {
    double least = 1e9;
    for (qsizetype i = 1; i < line.size(); ++i) {
        const QPointF along = line[i] - line[i - 1];
        const double u = std::clamp(QPointF::dotProduct(p - line[i - 1], along) /
                                        QPointF::dotProduct(along, along),
                                    0.0, 1.0);
        const QPointF off = p - line[i - 1] - u * along;
        least = std::min(least, std::hypot(off.x(), off.y()));
    }
    return least;
}

// The points of a path of relative steps, y upwards.
QPolygonF points_of(const QByteArray& path) {
    static const QRegularExpression number(QStringLiteral("-?[0-9]+"));
    QPolygonF points;
    QList<int> values;
    auto matches = number.globalMatch(QString::fromLatin1(path));
    while (matches.hasNext())
        values << matches.next().captured().toInt();
    QPointF here;
    for (qsizetype i = 0; i + 1 < values.size(); i += 2) {
        here += QPointF(values[i], -values[i + 1]) / 10000.0;
        points << here;
    }
    return points;
}

} // namespace

class DrawingsHtml : public QObject {
    Q_OBJECT

private slots:
    void thinned_lines() {
        const QPolygonF points = wave(1001);
        for (const double flatness : {1e-5, 1e-3}) {
            const QPolygonF few = thinned(points, flatness);
            QVERIFY2(few.size() > 10 && few.size() < 700,
                     QByteArray::number(few.size()).constData());
            QCOMPARE(few.first(), points.first());
            QCOMPARE(few.last(), points.last());
            for (const QPointF& point : points)
                QVERIFY(distance_from(few, point) <= flatness);
        }
        QCOMPARE(thinned({}, 0.1), QPolygonF());
        QCOMPARE(thinned({{QPointF(2, 3)}}, 0.1), QPolygonF({QPointF(2, 3)}));
        QCOMPARE(thinned({{QPointF(0, 0), QPointF(1, 0), QPointF(2, 0)}}, 0.1),
                 QPolygonF({QPointF(0, 0), QPointF(2, 0)}));
        // A point that reverses along the same line is kept.
        QCOMPARE(thinned({{QPointF(0, 0), QPointF(2, 0), QPointF(1, 0)}}, 0.1).size(), 3);
    }

    // However rough the line is.
    void bounded() {
        QPolygonF rough;
        for (int i = 0; i < 200000; ++i)
            rough << QPointF(i / 200000.0, i % 2);
        QVERIFY(thinned(rough, 1e-9).size() <= 2001);
        QCOMPARE(thinned(rough, 1e-9).last(), rough.last());
        Picture picture;
        picture.add(LineKind::outline, rough);
        QVERIFY(picture_svg(picture).size() < 50000);
    }

    void paths() {
        Picture picture;
        const QPolygonF points = wave(501);
        picture.add(LineKind::upper, points);
        const QPolygonF drawn = points_of(picture.lines[0].path);
        for (const QPointF& point : points)
            QVERIFY(distance_from(drawn, point) < 1.3e-4);
        QCOMPARE(picture.high, 1000);
        QCOMPARE(picture.low, -1000);
        const QByteArray svg = picture_svg(picture);
        QVERIFY2(svg.startsWith("<svg viewBox=\"-120 -1120 10240 2240\" "),
                 svg.left(60).constData());
        QCOMPARE(svg.count("<path class=\"u\" d=\"M0 0l"), 1);
    }

    void no_paths() {
        Picture picture;
        picture.add(LineKind::outline, {});
        picture.add(LineKind::outline, {{QPointF(0, 0)}});
        picture.add(LineKind::outline, {{QPointF(0, 0), QPointF(101, 0)}});
        picture.add(LineKind::outline,
                    {{QPointF(0, 0), QPointF(0, std::numeric_limits<double>::quiet_NaN())}});
        QVERIFY(picture.is_empty());
        // A line shorter than the resolution is drawn as a point.
        picture.add(LineKind::outline, {{QPointF(0.5, 0.1), QPointF(0.500001, 0.1)}});
        QCOMPARE(picture.lines[0].path, QByteArray("M5000-1000h0"));
    }

    void empty_cells() {
        HtmlSettings settings;
        settings.title = QStringLiteral("<Title> & \"more\"");
        settings.columns = {{QStringLiteral("A"), false}, {QStringLiteral("B"), true}};
        settings.picture_columns = {{QStringLiteral("One"), {}, {}},
                                    {QStringLiteral("Two"), {}, {}}};
        HtmlPage page(settings);
        HtmlRow row;
        row.name = QStringLiteral("folder/<name>");
        page.add(row);
        row.cells = {{QStringLiteral("a"), {}}, {QStringLiteral("1/3"), 1.0 / 3.0}};
        row.remarks = QStringList{QStringLiteral("<b>")};
        page.add(row);
        const QByteArray bytes = page.bytes({});
        const qsizetype second = bytes.indexOf("<tr id=\"f2\">");
        const qsizetype first = bytes.indexOf("<tr id=\"f1\">");
        QCOMPARE(bytes.mid(first, second - first).count("<td"), 6);
        QCOMPARE(bytes.mid(second, bytes.indexOf("</tbody>") - second).count("<td"), 6);
        QVERIFY(bytes.contains("<td class=\"num\" data-v=\"0.333333333\">1/3</td>"));
        QVERIFY(bytes.contains("<span class=\"dir\">folder/<wbr></span>&lt;name&gt;</bdi>"));
        QVERIFY(bytes.contains("<li>&lt;b&gt;</li>"));
        QCOMPARE(bytes.count("&lt;Title&gt; &amp; &quot;more&quot;"), 2);
        QVERIFY(bytes.contains(">2 files</p>"));
        QCOMPARE(page.bytes({}), bytes);
    }
};

AEROLITH_TEST_MAIN(DrawingsHtml)
#include "tst_drawings_html.moc"
