// SPDX-FileCopyrightText: Aerolith developers
// The opening fields: what is typed into them, when it is stored, how it is shown.
#include "app/mainwindow.h"
#include "baseline/splinebytes.h"
#include "editor/editspline.h"
#include "support/exactcompare.h"
#include "support/testmain.h"
#include "windowsupport.h"

#include <QLineEdit>
#include <QLocale>
#include <QMenu>
#include <QScopeGuard>
#include <QTemporaryDir>
#include <QTest>

#include <limits>

class tst_openings : public QObject {
    Q_OBJECT

private slots:
    void init();
    void typed_number_data();
    void typed_number();
    void leaving_the_field_stores();
    void letters_in_the_first_give_zero();
    void the_second_alone_reads_the_first_again();
    void the_first_alone_reads_the_second_again();
    void storing_does_not_repaint();
    void order_and_range_are_free();
    void shown_with_two_decimals_data();
    void shown_with_two_decimals();
    void shown_alike_in_every_locale();
    void field_that_was_not_edited_stores_nothing_data();
    void field_that_was_not_edited_stores_nothing();
    void return_alone_stores();
    void field_stores_once_for_one_edit();
    void opened_spline_leaves_the_fields();
    void resize_leaves_the_fields();
};

namespace {

constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr double not_a_number = std::numeric_limits<double>::quiet_NaN();

/// Types a text into a field as a user does, replacing its content.
void type(QLineEdit* field, const QString& text) {
    field->setFocus();
    field->selectAll();
    QTest::keyClick(field, Qt::Key_Backspace);
    QTest::keyClicks(field, text);
}

/// Sets the locale until the end of the scope.
[[nodiscard]] auto with_locale(const QString& name) {
    const QLocale before;
    QLocale::setDefault(QLocale(name));
    return qScopeGuard([before] { QLocale::setDefault(before); });
}

} // namespace

void tst_openings::init() {
    renew_document();
}

void tst_openings::typed_number_data() {
    QTest::addColumn<QString>("locale");
    QTest::addColumn<QString>("text");
    QTest::addColumn<double>("value");

    struct Row {
        const char* tag;
        const char* text;
        double c;
        double english;
        double german;
    };
    const Row rows[] = {
        {"plain", "12.5", 12.5, 12.5, 12.5},
        {"whole", "40", 40.0, 40.0, 40.0},
        {"comma", "12,5", 0.0, 0.0, 12.5},
        {"three-after-the-comma", "1,234", 0.0, 0.0, 1.234},
        {"three-after-the-point", "1.234", 1.234, 1.234, 1.234},
        {"groups-with-commas", "1,234.5", 0.0, 0.0, 0.0},
        {"groups-with-points", "1.234,5", 0.0, 0.0, 0.0},
        {"blanks-around", "  7.25 ", 7.25, 7.25, 7.25},
        {"bare-fraction", ".5", 0.5, 0.5, 0.5},
        {"bare-point", "5.", 5.0, 5.0, 5.0},
        {"exponent", "1e-3", 0.001, 0.001, 0.001},
        {"plus-sign", "+3", 3.0, 3.0, 3.0},
        {"negative", "-12.5", -12.5, -12.5, -12.5},
        {"negative-zero", "-0", -0.0, -0.0, -0.0},
        {"above-hundred", "250", 250.0, 250.0, 250.0},
        {"beyond-double", "1e400", 0.0, 0.0, 0.0},
        {"beyond-double-negative", "-1e400", 0.0, 0.0, 0.0},
        {"largest", "1e308", 1e308, 1e308, 1e308},
        {"infinite", "inf", infinity, infinity, infinity},
        {"infinite-negative", "-inf", -infinity, -infinity, -infinity},
        {"not-a-number", "nan", not_a_number, not_a_number, not_a_number},
        {"empty", "", 0.0, 0.0, 0.0},
        {"blanks", "   ", 0.0, 0.0, 0.0},
        {"letters", "abc", 0.0, 0.0, 0.0},
        {"per-cent-sign", "50%", 0.0, 0.0, 0.0},
        {"letters-behind", "12.5mm", 0.0, 0.0, 0.0},
        {"two-numbers", "1 2", 0.0, 0.0, 0.0},
        {"two-points", "1.2.3", 0.0, 0.0, 0.0},
        {"two-signs", "--5", 0.0, 0.0, 0.0},
        {"point-alone", ".", 0.0, 0.0, 0.0},
        {"sign-alone", "-", 0.0, 0.0, 0.0},
        {"hexadecimal", "0x10", 0.0, 0.0, 0.0},
    };
    for (const Row& row : rows) {
        const QString text = QString::fromLatin1(row.text);
        QTest::addRow("%s-c", row.tag) << QStringLiteral("C") << text << row.c;
        QTest::addRow("%s-en", row.tag) << QStringLiteral("en_US") << text << row.english;
        QTest::addRow("%s-de", row.tag) << QStringLiteral("de_DE") << text << row.german;
    }
}

void tst_openings::typed_number() {
    QFETCH(QString, locale);
    QFETCH(QString, text);
    QFETCH(double, value);

    const auto restore = with_locale(locale);
    MainWindow window;
    SHOW(window);
    for (const bool first : {true, false}) {
        window.p->spline.startVent = 77.0;
        window.p->spline.endVent = 77.0;
        QLineEdit* field = first ? window.O1Edit : window.O2Edit;
        type(field, text);
        QCOMPARE(field->text(), text);
        COMPARE_BITS(window.p->spline.startVent, 77.0);
        QTest::keyClick(field, Qt::Key_Return);
        COMPARE_BITS(first ? window.p->spline.startVent : window.p->spline.endVent, value);
        QCOMPARE(field->text(), text);
    }
}

void tst_openings::leaving_the_field_stores() {
    MainWindow window;
    SHOW(window);
    type(window.O1Edit, QStringLiteral("12.5"));
    QTest::keyClick(window.windowHandle(), Qt::Key_Tab);
    QVERIFY(!window.O1Edit->hasFocus());
    COMPARE_BITS(window.p->spline.startVent, 12.5);

    type(window.O2Edit, QStringLiteral("30"));
    QTest::mouseClick(window.spline_widget, Qt::LeftButton, {}, QPoint(300, 300));
    QVERIFY(!window.O2Edit->hasFocus());
    COMPARE_BITS(window.p->spline.startVent, 12.5);
    COMPARE_BITS(window.p->spline.endVent, 30.0);
}

void tst_openings::letters_in_the_first_give_zero() {
    MainWindow window;
    SHOW(window);
    type(window.O1Edit, QStringLiteral("12.5"));
    window.spline_widget->setFocus();
    COMPARE_BITS(window.p->spline.startVent, 12.5);
    type(window.O1Edit, QStringLiteral("nose"));
    window.spline_widget->setFocus();
    COMPARE_BITS(window.p->spline.startVent, 0.0);
    QCOMPARE(window.O1Edit->text(), QStringLiteral("nose"));
}

void tst_openings::the_second_alone_reads_the_first_again() {
    MainWindow window;
    SHOW(window);
    window.O1Edit->setText(QStringLiteral("8.75"));
    COMPARE_BITS(window.p->spline.startVent, 0.0);
    type(window.O2Edit, QStringLiteral("20"));
    QTest::keyClick(window.O2Edit, Qt::Key_Return);
    COMPARE_BITS(window.p->spline.startVent, 8.75);
    COMPARE_BITS(window.p->spline.endVent, 20.0);
}

void tst_openings::the_first_alone_reads_the_second_again() {
    MainWindow window;
    SHOW(window);
    window.O2Edit->setText(QStringLiteral("8.75"));
    type(window.O1Edit, QStringLiteral("5"));
    QTest::keyClick(window.O1Edit, Qt::Key_Return);
    COMPARE_BITS(window.p->spline.startVent, 5.0);
    COMPARE_BITS(window.p->spline.endVent, 8.75);
}

void tst_openings::storing_does_not_repaint() {
    MainWindow window;
    SHOW(window);
    window.O1Edit->setText(QStringLiteral("8.75"));
    QCoreApplication::processEvents();
    const PaintCount paints(window.spline_widget);
    window.change_O1_O2();
    QCOMPARE(paints.count(), 0);
    COMPARE_BITS(window.p->spline.startVent, 8.75);
    QCoreApplication::processEvents();
    QCOMPARE(paints.count(), 0);
}

void tst_openings::order_and_range_are_free() {
    MainWindow window;
    window.O1Edit->setText(QStringLiteral("90"));
    window.O2Edit->setText(QStringLiteral("-10"));
    window.change_O1_O2();
    COMPARE_BITS(window.p->spline.startVent, 90.0);
    COMPARE_BITS(window.p->spline.endVent, -10.0);
    QCOMPARE(window.O1Edit->text(), QStringLiteral("90"));
    QCOMPARE(window.O2Edit->text(), QStringLiteral("-10"));
}

void tst_openings::shown_with_two_decimals_data() {
    QTest::addColumn<double>("value");
    QTest::addColumn<QString>("text");

    QTest::newRow("half") << 12.5 << QStringLiteral("12.50");
    QTest::newRow("zero") << 0.0 << QStringLiteral("0.00");
    QTest::newRow("negative-zero") << -0.0 << QStringLiteral("0.00");
    QTest::newRow("whole") << 100.0 << QStringLiteral("100.00");
    QTest::newRow("negative") << -3.25 << QStringLiteral("-3.25");
    QTest::newRow("rounded-down") << 33.333333 << QStringLiteral("33.33");
    QTest::newRow("rounded-up") << 66.666666 << QStringLiteral("66.67");
    QTest::newRow("thousands") << 12345.678 << QStringLiteral("12345.68");
    QTest::newRow("infinite") << infinity << QStringLiteral("inf");
}

void tst_openings::shown_with_two_decimals() {
    QFETCH(double, value);
    QFETCH(QString, text);

    MainWindow window;
    window.p->spline.startVent = value;
    window.p->spline.endVent = 1.0;
    window.setupEditO1_O2();
    QCOMPARE(window.O1Edit->text(), text);
    QCOMPARE(window.O2Edit->text(), QStringLiteral("1.00"));

    window.p->spline.startVent = 1.0;
    window.p->spline.endVent = value;
    window.setupEditO1_O2();
    QCOMPARE(window.O1Edit->text(), QStringLiteral("1.00"));
    QCOMPARE(window.O2Edit->text(), text);
}

void tst_openings::shown_alike_in_every_locale() {
    const auto restore = with_locale(QStringLiteral("de_DE"));
    MainWindow window;
    window.p->spline.startVent = 12345.5;
    window.setupEditO1_O2();
    QCOMPARE(window.O1Edit->text(), QStringLiteral("12345.50"));
}

void tst_openings::field_that_was_not_edited_stores_nothing_data() {
    QTest::addColumn<bool>("shown_anew");

    QTest::newRow("as-the-window-came-up") << false;
    QTest::newRow("shown-from-the-document") << true;
}

void tst_openings::field_that_was_not_edited_stores_nothing() {
    QFETCH(bool, shown_anew);
    MainWindow window;
    SHOW(window);
    // A third decimal, which the fields do not show.
    window.p->spline.startVent = 12.125;
    window.p->spline.endVent = 33.375;
    if (shown_anew)
        window.setupEditO1_O2();
    for (QLineEdit* field : {window.O1Edit, window.O2Edit}) {
        QTest::mouseClick(field, Qt::LeftButton);
        QVERIFY(field->hasFocus());
        QTest::keyClick(field, Qt::Key_Home);
        QTest::keyClick(field, Qt::Key_End, Qt::ShiftModifier);
        QTest::mouseClick(window.spline_widget, Qt::LeftButton, {}, QPoint(300, 300));
        QVERIFY(!field->hasFocus());
        COMPARE_BITS(window.p->spline.startVent, 12.125);
        COMPARE_BITS(window.p->spline.endVent, 33.375);
    }
}

void tst_openings::return_alone_stores() {
    MainWindow window;
    SHOW(window);
    window.p->spline.startVent = 12.5;
    window.p->spline.endVent = 33.0;
    QTest::keyClick(window.O1Edit, Qt::Key_Return);
    COMPARE_BITS(window.p->spline.startVent, 0.0);
    COMPARE_BITS(window.p->spline.endVent, 0.0);
}

void tst_openings::field_stores_once_for_one_edit() {
    MainWindow window;
    SHOW(window);
    type(window.O1Edit, QStringLiteral("5"));
    window.spline_widget->setFocus();
    COMPARE_BITS(window.p->spline.startVent, 5.0);
    window.p->spline.startVent = 12.5;
    window.O1Edit->setFocus();
    window.spline_widget->setFocus();
    COMPARE_BITS(window.p->spline.startVent, 12.5);
}

void tst_openings::opened_spline_leaves_the_fields() {
    const QTemporaryDir folder;
    const QString name = folder.filePath(QStringLiteral("section.spl"));
    QVERIFY(make_file(name, baseline::spline_bytes(distinct_spline())));
    MainWindow window;
    SHOW(window);

    // A field keeps the keyboard while the menu and the dialog are open.
    type(window.O1Edit, QStringLiteral("5"));
    ModalGuard guard({ModalGuard::choose_file(name)});
    window.actionOpen_foil_spline->trigger();
    QCOMPARE(guard.count(), 1);
    window.activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&window));
    COMPARE_BITS(window.p->spline.startVent, 12.5);
    COMPARE_BITS(window.p->spline.endVent, 33.3);
    QCOMPARE(window.O1Edit->text(), QStringLiteral("5"));
    QCOMPARE(window.O2Edit->text(), QStringLiteral("0.00"));

    window.spline_widget->setFocus();
    QVERIFY(!window.O1Edit->hasFocus());
    COMPARE_BITS(window.p->spline.startVent, 12.5);
    COMPARE_BITS(window.p->spline.endVent, 33.3);
}

void tst_openings::resize_leaves_the_fields() {
    MainWindow window;
    SHOW(window);
    type(window.O1Edit, QStringLiteral("5"));
    window.spline_widget->setFocus();
    window.resize(900, 700);
    QCoreApplication::processEvents();
    COMPARE_BITS(window.p->spline.startVent, 0.0);
    QCOMPARE(window.O1Edit->text(), QStringLiteral("5"));
}

AEROLITH_TEST_MAIN(tst_openings)
#include "tst_openings.moc"
