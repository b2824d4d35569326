// SPDX-FileCopyrightText: Aerolith developers
// The table pane: how an outline is listed, and what the user can do in the pane.
#include "app/mainwindow.h"
#include "support/testmain.h"
#include "windowsupport.h"

#include <QClipboard>
#include <QFontMetricsF>
#include <QGuiApplication>
#include <QLocale>
#include <QScopeGuard>
#include <QScrollBar>
#include <QTest>
#include <QTextBlock>
#include <QTextLayout>

#include <algorithm>
#include <cmath>
#include <limits>

class tst_tablepane : public QObject {
    Q_OBJECT

private slots:
    void init();
    void listing_data();
    void listing();
    void row_of_a_number_data();
    void row_of_a_number();
    void mirrored_outline_lists_the_other_way();
    void thousand_points();
    void long_listing_has_few_paragraphs();
    void replaces_the_listing_before();
    void alike_in_every_locale();
    void repaints_the_window();
    void document_is_not_touched();
    void read_only_but_selectable();
    void each_row_is_one_line_data();
    void each_row_is_one_line();
};

namespace {

constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr double not_a_number = std::numeric_limits<double>::quiet_NaN();

const QString header = QStringLiteral(" airfoil table \t\n \t\n");
const QString edge = QStringLiteral("1.00000   0.00000 \t\n");

QString listing_of(const QPolygonF& outline) {
    MainWindow window;
    window.Write_BaseTable(outline);
    return window.tableEdit->toPlainText();
}

/// Three points of positive area sum, so that the points between are listed in the
/// order given.
QPolygonF outline_with(QPointF second, QPointF third) {
    return QPolygonF({{1.0, 0.0}, second, third});
}

} // namespace

void tst_tablepane::init() {
    renew_document();
}

void tst_tablepane::listing_data() {
    QTest::addColumn<QPolygonF>("outline");
    QTest::addColumn<QString>("rows");

    const QString up = QStringLiteral("0.00000   0.10000 \t\n");
    const QString down = QStringLiteral("0.50000   -0.10000 \t\n");
    QTest::newRow("three-points-positive") << outline_with({0.0, 0.1}, {0.5, -0.1}) << up + down;
    QTest::newRow("three-points-negative")
        << outline_with({0.0, -0.1}, {0.5, 0.1})
        << QStringLiteral("0.50000   0.10000 \t\n0.00000   -0.10000 \t\n");
    QTest::newRow("empty") << QPolygonF() << QString();
    QTest::newRow("one-point") << QPolygonF(QList<QPointF>{{0.5, 0.1}}) << QString();
    QTest::newRow("first-point-inside")
        << QPolygonF({{0.9, 0.0}, {0.0, 0.1}, {0.5, -0.1}}) << up + down;
    QTest::newRow("just-below-the-edge")
        << outline_with({0.99998, 0.1}, {0.5, 0.2})
        << QStringLiteral("0.99998   0.10000 \t\n0.50000   0.20000 \t\n");
    QTest::newRow("at-the-edge") << outline_with({0.99999, 0.1}, {0.5, -0.1}) << down;
    QTest::newRow("one-bit-below-the-edge")
        << outline_with({std::nextafter(0.99999, 0.0), 0.1}, {0.5, 0.2})
        << QStringLiteral("0.99999   0.10000 \t\n0.50000   0.20000 \t\n");
    QTest::newRow("behind-the-edge") << outline_with({1.5, 0.2}, {0.5, -0.1}) << down;
    QTest::newRow("closed-outline")
        << QPolygonF({{1.0, 0.0}, {0.0, 0.1}, {0.5, -0.1}, {1.0, 0.0}}) << up + down;
    QTest::newRow("ahead-of-the-nose") << outline_with({-0.25, 0.1}, {0.5, -0.1})
                                       << QStringLiteral("-0.25000   0.10000 \t\n") + down;
    // An area of 0 is not positive.
    QTest::newRow("no-area-reversed")
        << QPolygonF({{1.0, 0.0}, {0.25, 0.0}, {0.75, 0.0}})
        << QStringLiteral("0.75000   0.00000 \t\n0.25000   0.00000 \t\n");
    QTest::newRow("area-not-a-number-reversed")
        << QPolygonF({{1.0, 0.0}, {0.25, not_a_number}, {0.75, 0.5}})
        << QStringLiteral("0.75000   0.50000 \t\n0.25000       nan \t\n");
    QTest::newRow("x-not-a-number-left-out")
        << QPolygonF({{1.0, 0.0}, {not_a_number, 0.25}, {0.75, 0.5}})
        << QStringLiteral("0.75000   0.50000 \t\n");
    QTest::newRow("x-infinite-left-out") << QPolygonF({{1.0, 0.0}, {infinity, 0.25}, {0.75, 0.5}})
                                         << QStringLiteral("0.75000   0.50000 \t\n");
    // The closing edge does not count: here the sum is positive, but the area is not.
    QTest::newRow("sum-without-closing-leg")
        << QPolygonF({{0.0, 1.0}, {0.5, 0.5}, {0.0, 0.6}, {-0.5, 0.5}})
        << QStringLiteral("0.50000   0.50000 \t\n0.00000   0.60000 \t\n-0.50000   0.50000 \t\n");
}

void tst_tablepane::listing() {
    QFETCH(QPolygonF, outline);
    QFETCH(QString, rows);
    QCOMPARE(listing_of(outline), header + edge + rows + edge);
}

void tst_tablepane::row_of_a_number_data() {
    QTest::addColumn<QPointF>("point");
    QTest::addColumn<QString>("row");

    QTest::newRow("example") << QPointF(0.5, -0.0123) << QStringLiteral("0.50000   -0.01230 \t\n");
    QTest::newRow("rounded") << QPointF(0.123456, 0.000004)
                             << QStringLiteral("0.12346   0.00000 \t\n");
    QTest::newRow("negative-zero")
        << QPointF(-0.0, -0.0) << QStringLiteral("0.00000   0.00000 \t\n");
    QTest::newRow("negative-rounded-to-zero")
        << QPointF(0.5, -1e-7) << QStringLiteral("0.50000   -0.00000 \t\n");
    QTest::newRow("wide") << QPointF(-1234.5, 99999.125)
                          << QStringLiteral("-1234.50000   99999.12500 \t\n");
    QTest::newRow("infinite-ordinate")
        << QPointF(0.5, infinity) << QStringLiteral("0.50000       inf \t\n");
    QTest::newRow("infinite-abscissa")
        << QPointF(-infinity, 0.25) << QStringLiteral("   -inf   0.25000 \t\n");
}

void tst_tablepane::row_of_a_number() {
    QFETCH(QPointF, point);
    QFETCH(QString, row);
    QCOMPARE(listing_of(QList<QPointF>{{1.0, 0.0}, point}), header + edge + row + edge);
}

void tst_tablepane::mirrored_outline_lists_the_other_way() {
    QPolygonF outline;
    QPolygonF mirrored;
    for (int i = 0; i <= 12; ++i) {
        const double angle = i * 0.5235987755982988;
        outline.append({0.5 + 0.4 * std::cos(angle), 0.05 * i * std::sin(angle)});
        mirrored.append({outline.last().x(), -outline.last().y()});
    }
    QStringList rows = listing_of(outline).split(QLatin1Char('\n'));
    QStringList mirrored_rows = listing_of(mirrored).split(QLatin1Char('\n'));
    QCOMPARE(rows.size(), 2 + 14 + 1);
    QCOMPARE(mirrored_rows.size(), rows.size());
    const auto abscissas = [](const QStringList& lines) {
        QStringList firsts;
        for (const QString& line : lines.mid(2, 14))
            firsts.append(line.left(7));
        return firsts;
    };
    QStringList reversed = abscissas(mirrored_rows);
    std::reverse(reversed.begin(), reversed.end());
    QCOMPARE(reversed, abscissas(rows));
}

void tst_tablepane::thousand_points() {
    QPolygonF outline;
    QString rows;
    for (int i = 0; i < 1000; ++i) {
        const QPointF point(0.5 + 0.5 * std::cos(0.00628 * i), 0.06 * std::sin(0.00628 * i));
        outline.append(point);
        if (i > 0 && point.x() < 0.99999)
            rows += table_row(point.x(), point.y());
    }
    QCOMPARE(listing_of(outline), header + edge + rows + edge);
}

void tst_tablepane::long_listing_has_few_paragraphs() {
    constexpr int paragraphs = 940;
    MainWindow window;
    // Two rows of the title, two of the edge, and one row less than would begin a new paragraph.
    const int points = 64 * paragraphs - 4;
    window.Write_BaseTable(QPolygonF(QList<QPointF>(points, QPointF(0.5, -0.25))));
    QCOMPARE(window.tableEdit->document()->blockCount(), paragraphs);
    const QString row = QStringLiteral("0.50000   -0.25000 \t\n");
    QCOMPARE(window.tableEdit->toPlainText(), header + edge + row.repeated(points - 1) + edge);
}

void tst_tablepane::replaces_the_listing_before() {
    MainWindow window;
    window.Write_BaseTable(outline_with({0.0, 0.1}, {0.5, -0.1}));
    window.Write_BaseTable(outline_with({0.25, 0.25}, {0.75, -0.125}));
    QCOMPARE(window.tableEdit->toPlainText(),
             header + edge + QStringLiteral("0.25000   0.25000 \t\n0.75000   -0.12500 \t\n") +
                 edge);
    window.Write_BaseTable(QPolygonF());
    QCOMPARE(window.tableEdit->toPlainText(), header + edge + edge);
    QCOMPARE(window.TabletextEdit.toPlainText(), QString());
}

void tst_tablepane::alike_in_every_locale() {
    const QLocale before;
    const auto restore = qScopeGuard([before] { QLocale::setDefault(before); });
    QLocale::setDefault(QLocale(QStringLiteral("de_DE")));
    QCOMPARE(listing_of(QList<QPointF>{{1.0, 0.0}, {0.5, 1234.25}}),
             header + edge + QStringLiteral("0.50000   1234.25000 \t\n") + edge);
}

void tst_tablepane::repaints_the_window() {
    MainWindow window;
    SHOW(window);
    const PaintCount paints(&window);
    QCoreApplication::processEvents();
    QCOMPARE(paints.count(), 0);
    window.Write_BaseTable(QPolygonF());
    QTRY_VERIFY(paints.count() > 0);
}

void tst_tablepane::document_is_not_touched() {
    MainWindow window;
    window.p->baseAirfoil = QPolygonF(QList<QPointF>{{1.0, 0.0}, {0.5, 0.5}});
    window.p->baseAirfoilName = QStringLiteral("before");
    window.p->spline.num_pnt = 4;
    window.Write_BaseTable(outline_with({0.0, 0.1}, {0.5, -0.1}));
    QCOMPARE(window.p->baseAirfoil.size(), 2);
    QCOMPARE(window.p->baseAirfoilName, QStringLiteral("before"));
    QCOMPARE(window.p->spline.num_pnt, 4);
    QVERIFY(window.p->workAirfoil.isEmpty());
}

void tst_tablepane::read_only_but_selectable() {
    MainWindow window;
    SHOW(window);
    window.Write_BaseTable(outline_with({0.0, 0.1}, {0.5, -0.1}));
    const QString text = window.tableEdit->toPlainText();
    window.tableEdit->setFocus();
    QTest::keyClicks(window.tableEdit, QStringLiteral("7"));
    QTest::keyClick(window.tableEdit, Qt::Key_Delete);
    QTest::keyClick(window.tableEdit, Qt::Key_A, Qt::ControlModifier);
    QTest::keyClick(window.tableEdit, Qt::Key_Backspace);
    QTest::keyClick(window.tableEdit, Qt::Key_X, Qt::ControlModifier);
    QCOMPARE(window.tableEdit->toPlainText(), text);

    QGuiApplication::clipboard()->clear();
    QTest::keyClick(window.tableEdit, Qt::Key_C, Qt::ControlModifier);
    QCOMPARE(QGuiApplication::clipboard()->text(), text);
    QVERIFY(window.tableEdit->textInteractionFlags() & Qt::TextSelectableByMouse);
}

// A row with a negative number extends beyond the pane's edge with its tab.
void tst_tablepane::each_row_is_one_line_data() {
    QTest::addColumn<int>("font_size"); // points

    for (const int size : {8, 9, 10, 12, 16})
        QTest::addRow("%d-points", size) << size;
}

// Every digit must be reachable: a number without its last digits looks like another number.
void tst_tablepane::each_row_is_one_line() {
    QFETCH(int, font_size);
    MainWindow window;
    QFont font = window.tableEdit->font();
    font.setPointSize(font_size);
    window.tableEdit->setFont(font);
    SHOW(window);
    window.Write_BaseTable(QPolygonF(QList<QPointF>(100, QPointF(0.5, -0.25))));
    QTRY_VERIFY(window.tableEdit->verticalScrollBar()->isVisible());
    const QTextDocument* listing = window.tableEdit->document();
    QCOMPARE(listing->blockCount(), 2 + 1 + 99 + 1 + 1);
    // Requesting the size lays out the rows that are not visible.
    QVERIFY(!listing->size().isEmpty());
    for (QTextBlock row = listing->begin(); row.isValid(); row = row.next())
        QCOMPARE(row.layout()->lineCount(), 1);
    const QFontMetricsF metrics(window.tableEdit->font());
    const double margins = 2.0 * listing->documentMargin();
    const double needed =
        metrics.horizontalAdvance(QStringLiteral("0.50000   -0.25000 ")) + margins;
    const QScrollBar* bar = window.tableEdit->horizontalScrollBar();
    const int shown = window.tableEdit->viewport()->width();
    QCOMPARE(bar->isVisible(), bar->maximum() > 0);
    QVERIFY(font_size > 9 || !bar->isVisible());
    QVERIFY(shown + bar->maximum() >= needed);
    // The tab at the end of a row takes no room.
    QVERIFY(shown + bar->maximum() <= std::max(double(shown), needed + 4.0));
}

AEROLITH_TEST_MAIN(tst_tablepane)
#include "tst_tablepane.moc"
