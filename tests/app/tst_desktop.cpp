// SPDX-FileCopyrightText: Aerolith developers
// The window on a desktop: dark themes, high-density screens, assistive technology and the tab
// order.
#include "app/mainwindow.h"
#include "support/testmain.h"
#include "windowsupport.h"

#include <QAccessible>
#include <QFontMetrics>
#include <QImage>
#include <QLabel>
#include <QPalette>
#include <QScopeGuard>
#include <QTimer>

#include <cmath>

namespace {

constexpr double least_contrast = 4.5;

// Relative luminance of a colour in the sRGB space, 0 (black) to 1 (white).
double luminance(const QColor& colour) {
    const auto linear = [](double c) {
        return c <= 0.04045 ? c / 12.92 : std::pow((c + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(colour.redF()) + 0.7152 * linear(colour.greenF()) +
           0.0722 * linear(colour.blueF());
}

double contrast(const QColor& a, const QColor& b) {
    const double lighter = std::max(luminance(a), luminance(b));
    const double darker = std::min(luminance(a), luminance(b));
    return (lighter + 0.05) / (darker + 0.05);
}

// The background of the canvas in a picture of the window, between the grid lines.
QColor ground_of(MainWindow& window) {
    const EditSpline& editor = *window.spline_widget;
    const QPoint between(editor.xc + editor.L_T / 20, editor.yc - editor.L_T / 20);
    return window.grab().toImage().pixelColor(editor.mapTo(&window, between));
}

// The colour of the chord line, which is drawn with Qt's own pen, before the grid.
QColor first_line(MainWindow& window) {
    const EditSpline& editor = *window.spline_widget;
    const QPoint place(editor.xc / 2, editor.yc);
    return window.grab().toImage().pixelColor(editor.mapTo(&window, place));
}

bool fields_are_readable(MainWindow& window) {
    const QColor pink(243, 159, 225);
    return contrast(window.O1Edit->palette().color(QPalette::Text), pink) >= least_contrast &&
           contrast(window.label->palette().color(QPalette::WindowText), pink) >= least_contrast &&
           contrast(window.plusButton->palette().color(QPalette::ButtonText), pink) >=
               least_contrast;
}

// Windows receive the change only in the event loop.
void change_palette(const QPalette& palette) {
    QTimer::singleShot(0, qApp, [&palette] {
        QApplication::setPalette(palette);
        QTimer::singleShot(0, qApp, &QCoreApplication::quit);
    });
    QApplication::exec();
}

void change_font(const QFont& font) {
    QTimer::singleShot(0, qApp, [&font] {
        QApplication::setFont(font);
        QTimer::singleShot(0, qApp, &QCoreApplication::quit);
    });
    QApplication::exec();
}

QFont font_of_size(int pixels, bool bold = false) {
    QFont font = QApplication::font();
    font.setPixelSize(pixels);
    font.setBold(bold);
    return font;
}

// Whether a label shows as many pixels of its text as with enough room.
bool text_is_whole(QLabel* label) {
    const auto text_pixels = [&] {
        const QImage image = label->grab().toImage();
        const QColor ground = image.pixelColor(0, 0);
        int count = 0;
        for (int y = 0; y < image.height(); ++y) {
            for (int x = 0; x < image.width(); ++x)
                count += image.pixelColor(x, y) != ground;
        }
        return count;
    };
    const QSize size = label->size();
    const int shown = text_pixels();
    label->resize(200, size.height());
    const int whole = text_pixels();
    label->resize(size);
    return shown == whole && whole > 0;
}

QImage picture_at_ratio(EditSpline& editor, int ratio) {
    QImage image(editor.size() * ratio, QImage::Format_RGB32);
    image.setDevicePixelRatio(ratio);
    image.fill(Qt::lightGray);
    editor.render(&image, QPoint(), QRegion(), QWidget::RenderFlags());
    return image;
}

// How far white extends downwards from a pixel.
int white_height(const QImage& image, QPoint from) {
    int y = from.y();
    while (y < image.height() && image.pixelColor(from.x(), y) == QColor(Qt::white))
        ++y;
    return y - from.y();
}

} // namespace

class tst_desktop : public QObject {
    Q_OBJECT
private slots:
    void init() { renew_document(); }

    void ground_is_light_data();
    void ground_is_light();
    void ground_follows_the_desktop();
    void labels_show_their_whole_text_data();
    void labels_show_their_whole_text();
    void labels_follow_the_desktop();
    void dense_screen_data();
    void dense_screen();
    void names_data();
    void names();
    void tab_order();
};

void tst_desktop::ground_is_light_data() {
    QTest::addColumn<QColor>("desktop");
    QTest::addColumn<bool>("kept");

    QTest::newRow("usual") << QColor(239, 239, 239) << true;
    QTest::newRow("white") << QColor(Qt::white) << true;
    QTest::newRow("just-light-enough") << QColor(167, 167, 167) << true;
    QTest::newRow("just-too-dark") << QColor(166, 166, 166) << false;
    QTest::newRow("dark") << QColor(45, 45, 48) << false;
    QTest::newRow("black") << QColor(Qt::black) << false;
    QTest::newRow("nearly-black") << QColor(10, 10, 10) << false;
    QTest::newRow("dark-blue") << QColor(20, 24, 60) << false;
    // As light as a light grey by the mean of the channels, but too dark for dark lines.
    QTest::newRow("bright-blue") << QColor(81, 81, 255) << false;
    QTest::newRow("bright-red") << QColor(255, 81, 81) << false;
    QTest::newRow("bluish-grey") << QColor(130, 150, 206) << false;
    // A small share of red is on the curved part of its scale.
    QTest::newRow("just-light-enough-turquoise") << QColor(14, 182, 210) << true;
    QTest::newRow("rose") << QColor(250, 200, 210) << true;
}

void tst_desktop::ground_is_light() {
    QFETCH(QColor, desktop);
    QFETCH(bool, kept);
    const QPalette usual = QApplication::palette();
    const auto restore = qScopeGuard([&] { QApplication::setPalette(usual); });
    QApplication::setPalette(QPalette(desktop));

    MainWindow window;
    SHOW(window);
    const QColor ground = ground_of(window);
    QCOMPARE(ground == desktop, kept);
    for (const QColor& line : {QColor(Qt::black), QColor(Qt::darkRed), QColor(Qt::darkBlue)})
        QVERIFY2(contrast(line, ground) >= least_contrast,
                 qPrintable(line.name() + QLatin1String(" on ") + ground.name()));
    QVERIFY(fields_are_readable(window));
    QVERIFY(contrast(first_line(window), ground) >= least_contrast);
}

void tst_desktop::ground_follows_the_desktop() {
    const QPalette usual = QApplication::palette();
    const auto restore = qScopeGuard([&] { QApplication::setPalette(usual); });
    MainWindow window;
    SHOW(window);
    const QColor pale(250, 250, 240);
    QVERIFY(ground_of(window) != pale);

    change_palette(QPalette(pale));
    QCOMPARE(ground_of(window), pale);
    change_palette(QPalette(QColor(30, 30, 30)));
    QVERIFY(contrast(ground_of(window), Qt::darkRed) >= least_contrast);
    QVERIFY(contrast(first_line(window), ground_of(window)) >= least_contrast);
    QVERIFY(fields_are_readable(window));
    change_palette(QPalette(pale));
    QCOMPARE(ground_of(window), pale);
}

void tst_desktop::labels_show_their_whole_text_data() {
    QTest::addColumn<int>("pixels");
    QTest::addColumn<bool>("bold");
    QTest::addColumn<bool>("kept");

    QTest::newRow("small") << 6 << false << true;
    QTest::newRow("usual") << 12 << false << false;
    QTest::newRow("usual-bold") << 12 << true << false;
    QTest::newRow("large") << 24 << false << false;
    QTest::newRow("huge") << 200 << false << false;
}

void tst_desktop::labels_show_their_whole_text() {
    QFETCH(int, pixels);
    QFETCH(bool, bold);
    QFETCH(bool, kept);
    const QFont usual = QApplication::font();
    const auto restore = qScopeGuard([&] { QApplication::setFont(usual); });
    QApplication::setFont(font_of_size(pixels, bold));

    MainWindow window;
    SHOW(window);
    for (QLabel* label : {window.label, window.label_2}) {
        QCOMPARE(label->size(), QSize(34, 17));
        QVERIFY(text_is_whole(label));
        QCOMPARE(label->font().bold(), bold);
        const int size = label->font().pixelSize();
        QCOMPARE(size == pixels, kept);
        const QFontMetrics larger(font_of_size(size + 1, bold));
        QVERIFY(kept || larger.horizontalAdvance(label->text()) > label->width());
    }
}

void tst_desktop::labels_follow_the_desktop() {
    const QFont usual = QApplication::font();
    const auto restore = qScopeGuard([&] { QApplication::setFont(usual); });
    QApplication::setFont(font_of_size(6));
    MainWindow window;
    SHOW(window);
    change_font(font_of_size(24));
    for (QLabel* label : {window.label, window.label_2}) {
        QVERIFY(text_is_whole(label));
        const int size = label->font().pixelSize();
        QVERIFY(size > 6 && size < 24);
    }
    change_font(font_of_size(6));
    QCOMPARE(window.label->font().pixelSize(), 6);
}

void tst_desktop::dense_screen_data() {
    QTest::addColumn<int>("ratio");

    QTest::newRow("ratio-1") << 1;
    QTest::newRow("ratio-2") << 2;
    QTest::newRow("ratio-3") << 3;
}

// The same items at the same places in logical pixels, whatever the density of the screen.
void tst_desktop::dense_screen() {
    QFETCH(int, ratio);
    MainWindow window;
    SHOW(window);
    EditSpline& editor = *window.spline_widget;
    editor.Generate_symetric_spline();
    settle(window);
    const QImage image = picture_at_ratio(editor, ratio);

    const auto colour_at = [&](double x, double y) {
        return image.pixelColor(int(x * ratio), int(y * ratio));
    };
    QCOMPARE(colour_at(2, editor.yc), QColor(Qt::black));
    QCOMPARE(colour_at(editor.xc + editor.L_T, editor.yc + 12), QColor(Qt::darkRed));
    // From two pixels below the middle of a control point, past the curve and the polygon.
    const QPointF marker = editor.p->spline.CP[2];
    const int height = white_height(image, (marker * ratio).toPoint() + QPoint(0, 2 * ratio));
    QVERIFY2(height >= 2 * ratio && height <= 3 * ratio, qPrintable(QString::number(height)));
}

void tst_desktop::names_data() {
    QTest::addColumn<QString>("object");
    QTest::addColumn<QString>("name");

    const auto row = [](const char* object, const char* name) {
        QTest::newRow(object) << QString::fromLatin1(object) << QString::fromLatin1(name);
    };
    row("spline_widget", "drawing area");
    row("O1Edit", "O-1 %, start opening from LE");
    row("O2Edit", "O-2 %, end opening from LE");
    row("plusButton", "+, scale working foil");
    row("minusButton", "-, scale working foil");
    row("rotplusButton", "R+, rotate clockwise");
    row("rotminusButton", "R-, rotate counter-clockwise");
    row("symetriclButton", "S, generate symetric spline");
    row("refreshButton", "Refresh knots");
    row("tableEdit", "airfoil table");
}

void tst_desktop::names() {
    QFETCH(QString, object);
    QFETCH(QString, name);
    MainWindow window;
    auto* widget = window.findChild<QWidget*>(object);
    QVERIFY(widget);
    QAccessibleInterface* interface = QAccessible::queryAccessibleInterface(widget);
    QVERIFY(interface);
    QCOMPARE(interface->text(QAccessible::Name), name);
}

void tst_desktop::tab_order() {
    MainWindow window;
    SHOW(window);
    window.spline_widget->setFocus();
    QStringList visited;
    for (int i = 0; i < 9; ++i) {
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        visited << QApplication::focusWidget()->objectName();
    }
    const QStringList picture = {
        QStringLiteral("O1Edit"),          QStringLiteral("O2Edit"),
        QStringLiteral("plusButton"),      QStringLiteral("minusButton"),
        QStringLiteral("rotplusButton"),   QStringLiteral("rotminusButton"),
        QStringLiteral("symetriclButton"), QStringLiteral("refreshButton"),
        QStringLiteral("tableEdit")};
    QCOMPARE(visited, picture);
}

AEROLITH_TEST_MAIN(tst_desktop)
#include "tst_desktop.moc"
