// SPDX-FileCopyrightText: Aerolith developers
// The main window: files, buttons and window events.
#include "app/mainwindow.h"

#include "airfoil/airfoil.h"

#include <QApplication>
#include <QCloseEvent>
#include <QColor>
#include <QFont>
#include <QFontInfo>
#include <QKeyEvent>
#include <QLabel>
#include <QLayout>
#include <QMessageBox>
#include <QPalette>
#include <QString>
#include <QTextDocument>

#include <cmath>

namespace {

// One click of a rotation button: a quarter of a degree, in radians.
constexpr double rotation_step = 0.5 * Pi / 360.0;

// The drawing has black, dark red and dark blue lines, and the fields have dark text on pink. From
// this luminance on, the background contrasts with all of them by at least 4.5 to 1.
constexpr double least_ground_luminance = 0.382;

const QColor light_ground(239, 239, 239);

// In pixels. A row with a negative ordinate just fits next to the scroll bar in a 9-point font.
constexpr double table_margin = 2.0;

// The relative luminance of a colour as WCAG 2.1 defines it, 0 (black) to 1 (white).
double luminance(const QColor& colour) {
    const auto linear = [](double c) {
        return c <= 0.04045 ? c / 12.92 : std::pow((c + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(colour.redF()) + 0.7152 * linear(colour.greenF()) +
           0.0722 * linear(colour.blueF());
}

} // namespace

MainWindow::MainWindow(QWidget* parent) : QMainWindow(parent), p(nullptr), opf(nullptr) {
    setupUi(this);
    setWindowFlags(Qt::FramelessWindowHint);
    opf = new myOpenFile(this);
    p = GetDataStruct();
    connect(this, &MainWindow::repaint_all, spline_widget, qOverload<>(&QWidget::repaint));
    connect(this, &MainWindow::to_repaint_opened_spline, spline_widget,
            &EditSpline::repaint_opened_spline);
    for (QWidget* child : spline_widget->findChildren<QWidget*>())
        child->installEventFilter(this);
    tableEdit->document()->setDocumentMargin(table_margin);
    keep_ground_light();
    fit_labels();
    mark_openings_unedited();
}

bool MainWindow::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() != QEvent::KeyPress)
        return QMainWindow::eventFilter(watched, event);
    // A key that a child ignores would propagate to the editor, which hides itself on Escape and
    // changes the spline on the others.
    const int key = static_cast<QKeyEvent*>(event)->key();
    const bool in_field = watched == O1Edit || watched == O2Edit;
    // The field itself handles Left and Right, but not with every modifier.
    const bool editors_own =
        in_field && (key == Qt::Key_Up || key == Qt::Key_Down || key == Qt::Key_Left ||
                     key == Qt::Key_Right || key == Qt::Key_Delete);
    if (key != Qt::Key_Escape && !editors_own)
        return QMainWindow::eventFilter(watched, event);
    watched->event(event);
    event->accept();
    return true;
}

bool MainWindow::event(QEvent* event) {
    const bool taken = QMainWindow::event(event);
    if (event->type() == QEvent::ApplicationPaletteChange)
        keep_ground_light();
    if (event->type() == QEvent::FontChange)
        fit_labels();
    return taken;
}

void MainWindow::keep_ground_light() {
    const bool dark =
        luminance(QApplication::palette(this).color(QPalette::Window)) < least_ground_luminance;
    const QPalette ground = dark ? QPalette(light_ground) : QPalette();
    setPalette(ground);
    // Widgets with a style sheet do not inherit the palette of the window.
    spline_widget->setPalette(ground);
    for (QWidget* child : spline_widget->findChildren<QWidget*>())
        child->setPalette(ground);
}

void MainWindow::fit_labels() {
    for (QLabel* narrow : {label, label_2}) {
        narrow->setFont(QFont());
        QFont font;
        int pixels = QFontInfo(narrow->font()).pixelSize();
        while (narrow->sizeHint().width() > narrow->width() && pixels > 1) {
            font.setPixelSize(--pixels);
            narrow->setFont(font);
        }
    }
}

void MainWindow::resizeEvent(QResizeEvent*) {
    // The resize event of a show arrives before the layouts have run, and the editor would take its
    // mapping from a size that it does not keep. Layouts that have run before do not run again
    // until they are invalidated.
    layout()->activate();
    centralWidget()->layout()->invalidate();
    centralWidget()->layout()->activate();
    spline_widget->Init_widget();
}

void MainWindow::closeEvent(QCloseEvent*) {
    close();
}

void MainWindow::on_actionExit_triggered() {
    close();
}

void MainWindow::on_plusButton_pressed() {
    spline_widget->ScaleFoil(1.0);
}

void MainWindow::on_minusButton_pressed() {
    spline_widget->ScaleFoil(-1.0);
}

void MainWindow::on_rotplusButton_clicked() {
    spline_widget->RotateSpline(rotation_step);
    emit repaint_all();
}

void MainWindow::on_rotminusButton_clicked() {
    spline_widget->RotateSpline(-rotation_step);
    emit repaint_all();
}

void MainWindow::on_symetriclButton_clicked() {
    spline_widget->Generate_symetric_spline();
    emit repaint_all();
}

void MainWindow::on_refreshButton_clicked() {
    p->spline.init_knots();
    spline_widget->repaint();
}

void MainWindow::on_actionOpen_backround_template_triggered() {
    const QString name = opf->DialogReadFromFile();
    if (name.isEmpty())
        return;
    p->baseAirfoilName = name;
    p->baseAirfoil = airfoil_Read(name);
    Write_BaseTable(p->baseAirfoil);
    emit repaint_all();
}

void MainWindow::on_actionOpen_foil_spline_triggered() {
    spline_widget->Init_widget();
    // Whatever the outcome, the old curve is gone: it is neither shown nor saved any more.
    spline_widget->update();
    const QString name = opf->DialogReadSplineFromFile();
    if (name.isEmpty() || !name.contains(QLatin1String(".spl")))
        return;
    if (opf->ReadParaStream(name) == 0)
        return;
    emit to_repaint_opened_spline();
}

void MainWindow::on_actionSave_as_spline_file_triggered() {
    JustSaveSplineFile(opf->DialogWriteSplineToFile());
}

void MainWindow::JustSaveSplineFile(QString fileName) {
    if (fileName.isEmpty())
        return;
    p->spline.airfoilName = fileName;
    opf->WriteParaStream(fileName);
}

void MainWindow::on_actionSave_as_table_triggered() {
    save_table(opf->DialogWriteToFile());
}

void MainWindow::save_table(const QString& name) {
    spline_widget->Save_airfoil_table(name);
    if (name.isEmpty() || spline_widget->table_saved())
        return;
    QMessageBox box(this);
    box.setTextFormat(Qt::PlainText);
    box.setIcon(QMessageBox::Warning);
    box.setText(tr("The table could not be written:") + QLatin1Char('\n') + name);
    box.exec();
}

void MainWindow::on_actionAbout_program_triggered() {
    About();
}

void MainWindow::About() {
    const QString text = QStringLiteral("Aerolith ver.1.0 \n") + QStringLiteral("\n Author:") +
                         QStringLiteral("Aerolith developers 2026") + QStringLiteral(" \n") +
                         QStringLiteral("\n contact: ") + QStringLiteral("-") +
                         QStringLiteral(" \n") + QStringLiteral("\n     home: ") +
                         QStringLiteral("-") + QStringLiteral("     \n");
    QMessageBox::about(this, QStringLiteral(" About Aerolith ver 1.0 -Qt4 "), text);
}
