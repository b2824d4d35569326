// SPDX-FileCopyrightText: Aerolith developers
// The menu entry that opens a spline, driven through its dialog.
#include "app/mainwindow.h"
#include "baseline/splinebytes.h"
#include "editor/editspline.h"
#include "support/exactcompare.h"
#include "support/testmain.h"
#include "windowsupport.h"

#include <QDir>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

class tst_fileflows : public QObject {
    Q_OBJECT

private slots:
    void init();
    void spline_is_opened();
    void spline_is_kept_to_the_last_bit();
    void spline_is_emptied_before_the_dialog();
    void cancelled_spline_leaves_no_curve();
    void name_decides_data();
    void name_decides();
    void missing_name_is_refused_by_the_dialog();
    void file_that_vanishes_is_reported_data();
    void file_that_vanishes_is_reported();
    void file_that_does_not_open();
    void short_file_data();
    void short_file();

private:
    QTemporaryDir folder;
};

namespace {

constexpr int whole_size = 3404;

/// The document's spline as the bytes of a file.
QByteArray state_of(const MainWindow& window) {
    return baseline::spline_bytes(window.p->spline);
}

/// Accepts a name in the dialog and does something before the call returns.
ModalGuard::Reaction choose_and_then(const QString& name, const std::function<void()>& last) {
    return [name, last](QWidget* window) {
        QObject::connect(qobject_cast<QDialog*>(window), &QDialog::accepted, last);
        ModalGuard::choose_file(name)(window);
    };
}

/// A file that exists but that nobody can open.
class Socket {
public:
    explicit Socket(const QString& name) : descriptor(socket(AF_UNIX, SOCK_STREAM, 0)) {
        sockaddr_un address{};
        address.sun_family = AF_UNIX;
        const QByteArray path = QFile::encodeName(name);
        qstrncpy(address.sun_path, path.constData(), sizeof address.sun_path);
        bound = bind(descriptor, reinterpret_cast<const sockaddr*>(&address), sizeof address) == 0;
    }
    ~Socket() { close(descriptor); }
    Socket(const Socket&) = delete;
    Socket& operator=(const Socket&) = delete;

    bool bound = false;

private:
    int descriptor;
};

} // namespace

void tst_fileflows::init() {
    renew_document();
    QVERIFY(folder.isValid());
}

void tst_fileflows::spline_is_opened() {
    const QString name = folder.filePath(QStringLiteral("section.spl"));
    MainWindow window;
    SHOW(window);
    window.symetriclButton->click();
    settle(window);
    window.p->spline.b_knots[5] += 0.01;
    window.p->spline.startVent = 12.5;
    window.p->spline.airfoilName = QStringLiteral("/stored/path.spl");
    const SplineFoil drawn = window.p->spline;
    QVERIFY(make_file(name, baseline::spline_bytes(drawn)));
    window.p->baseAirfoil = QPolygonF(QList<QPointF>{{1.0, 0.0}, {0.5, 0.5}});

    ModalGuard guard({ModalGuard::choose_file(name)});
    window.actionOpen_foil_spline->trigger();
    QCOMPARE(guard.count(), 1);
    QCOMPARE(window.p->spline.num_pnt, 10);
    QCOMPARE(window.p->spline.num_knt, 13);
    // The knots are those of the file: they are not recomputed.
    for (int i = 0; i < 13; ++i)
        COMPARE_BITS(window.p->spline.b_knots[i], drawn.b_knots[i]);
    QCOMPARE(window.p->spline.airfoilName, QStringLiteral("/stored/path.spl"));
    COMPARE_BITS(window.p->spline.startVent, 12.5);
    QCOMPARE(window.spline_widget->spline_poly.size(), 999);
    QCOMPARE(window.p->workAirfoil.size(), 999);
    QCOMPARE(window.p->baseAirfoil.size(), 2);
}

void tst_fileflows::spline_is_kept_to_the_last_bit() {
    const QString name = folder.filePath(QStringLiteral("distinct.spl"));
    const SplineFoil spline = distinct_spline();
    QVERIFY(make_file(name, baseline::spline_bytes(spline)));
    // Nothing paints on a hidden window, so the record stays as it was read.
    MainWindow window;
    window.p->spline.b_multi_knot[7] = 4;
    ModalGuard guard({ModalGuard::choose_file(name)});
    window.actionOpen_foil_spline->trigger();
    QCOMPARE(guard.count(), 1);
    QCOMPARE(state_of(window).toHex(), baseline::spline_bytes(spline).toHex());
    QCOMPARE(window.p->spline.b_multi_knot[7], 4);
    QCOMPARE(window.spline_widget->spline_poly.size(), 999);
}

void tst_fileflows::spline_is_emptied_before_the_dialog() {
    MainWindow window;
    SHOW(window);
    window.symetriclButton->click();
    window.p->spline.startVent = 10.0;
    window.p->spline.endVent = 20.0;
    window.spline_widget->f_scale = 2.0;
    window.spline_widget->p_D = QPointF(5.0, 6.0);
    window.spline_widget->pnt_selected = 4;

    int points = -1;
    int knots = -1;
    double openings = -1.0;
    ModalGuard guard({[&](QWidget* dialog) {
        points = window.p->spline.num_pnt;
        knots = window.p->spline.num_knt;
        openings = window.p->spline.startVent + window.p->spline.endVent;
        dialog->close();
    }});
    window.actionOpen_foil_spline->trigger();
    QCOMPARE(guard.count(), 1);
    QCOMPARE(points, 0);
    QCOMPARE(knots, 0);
    COMPARE_BITS(openings, 0.0);
    COMPARE_BITS(window.spline_widget->f_scale, 1.0);
    COMPARE_BITS(window.spline_widget->p_D, QPointF(0.0, 0.0));
    QCOMPARE(window.spline_widget->pnt_selected, -1);
}

void tst_fileflows::cancelled_spline_leaves_no_curve() {
    MainWindow window;
    SHOW(window);
    window.symetriclButton->click();
    settle(window);
    QCoreApplication::processEvents();
    QVERIFY(!window.spline_widget->spline_poly.isEmpty());
    // With another window active, the dialog does not cause a paint of this one.
    QWidget other;
    SHOW(other);
    const PaintCount paints(window.spline_widget);
    bool curve_gone = false;
    ModalGuard guard({[&](QWidget* dialog) {
        curve_gone = QTest::qWaitFor([&] { return paints.whole() > 0; }, 2000) &&
                     window.spline_widget->spline_poly.isEmpty();
        dialog->close();
    }});
    window.actionOpen_foil_spline->trigger();
    QCOMPARE(guard.count(), 1);
    QCOMPARE(window.p->spline.num_pnt, 0);
    QVERIFY(curve_gone);
    QVERIFY(window.spline_widget->spline_poly.isEmpty());
    QVERIFY(window.p->workAirfoil.isEmpty());

    const QString name = folder.filePath(QStringLiteral("nothing.dat"));
    ModalGuard saving({ModalGuard::choose_file(name)});
    window.actionSave_as_table->trigger();
    QCOMPARE(saving.count(), 1);
    const QString rows = table_row(1, 0) + table_row(1, 0);
    QCOMPARE(QString::fromUtf8(file_bytes(name)),
             name + QStringLiteral(" \t\n") + rows + QLatin1Char(' '));
}

void tst_fileflows::name_decides_data() {
    QTest::addColumn<QString>("file");
    QTest::addColumn<bool>("loaded");

    QTest::newRow("plain") << QStringLiteral("x.spl") << true;
    QTest::newRow("capitals") << QStringLiteral("x.SPL") << false;
    QTest::newRow("one-capital") << QStringLiteral("x.Spl") << false;
    QTest::newRow("no-extension") << QStringLiteral("xspl") << false;
    QTest::newRow("other-extension") << QStringLiteral("x.dat") << false;
    QTest::newRow("in-the-middle") << QStringLiteral("x.spl.bak") << true;
    QTest::newRow("longer-extension") << QStringLiteral("x.spline") << true;
    QTest::newRow("hidden-file") << QStringLiteral(".spl") << true;
    QTest::newRow("in-the-folder") << QStringLiteral("my.splines/x.dat") << true;
}

void tst_fileflows::name_decides() {
    QFETCH(QString, file);
    QFETCH(bool, loaded);

    const QString name = folder.filePath(file);
    QVERIFY(QDir().mkpath(QFileInfo(name).path()));
    QVERIFY(make_file(name, baseline::spline_bytes(distinct_spline())));
    MainWindow window;
    ModalGuard guard({ModalGuard::choose_file(name)});
    window.actionOpen_foil_spline->trigger();
    QCOMPARE(guard.count(), 1);
    QCOMPARE(window.p->spline.num_pnt, loaded ? 5 : 0);
    QCOMPARE(window.p->spline.airfoilName,
             loaded ? QStringLiteral("/before/section.spl") : QString());
    QCOMPARE(window.spline_widget->spline_poly.size(), loaded ? 999 : 0);
    QVERIFY(QFile::remove(name));
}

void tst_fileflows::missing_name_is_refused_by_the_dialog() {
    MainWindow window;
    SHOW(window);
    const QString name = folder.filePath(QStringLiteral("missing.spl"));
    bool still_open = false;
    ModalGuard guard({[&](QWidget* dialog) {
                          ModalGuard::choose_file(name)(dialog);
                          still_open = dialog->isVisible();
                          qobject_cast<QDialog*>(dialog)->reject();
                      },
                      ModalGuard::press(QMessageBox::Ok)});
    window.actionOpen_foil_spline->trigger();
    QCOMPARE(guard.count(), 2);
    QVERIFY(still_open);
    QCOMPARE(window.p->spline.num_pnt, 0);
}

void tst_fileflows::file_that_vanishes_is_reported_data() {
    QTest::addColumn<QString>("file");

    QTest::newRow("plain") << QStringLiteral("gone.spl");
    QTest::newRow("marks") << QStringLiteral("<b>gone<br>%1 &amp; %2.spl");
}

void tst_fileflows::file_that_vanishes_is_reported() {
    QFETCH(QString, file);

    const QString name = folder.filePath(file);
    QVERIFY(QDir().mkpath(QFileInfo(name).path()));
    QVERIFY(make_file(name, baseline::spline_bytes(distinct_spline())));
    MainWindow window;
    SHOW(window);
    const QSignalSpy opened(&window, &MainWindow::to_repaint_opened_spline);
    ModalGuard guard({choose_and_then(name, [name] { QVERIFY(QFile::remove(name)); }),
                      ModalGuard::press(QMessageBox::Ok)});
    window.actionOpen_foil_spline->trigger();
    QCOMPARE(guard.count(), 2);
    QCOMPARE(guard.seen(1).class_name, QStringLiteral("QMessageBox"));
    QCOMPARE(guard.seen(1).text, name + QStringLiteral(" warning *** :file is missing "));
    QCOMPARE(guard.seen(1).text_format, Qt::PlainText);
    QCOMPARE(opened.size(), 0);
    QCOMPARE(window.p->spline.num_pnt, 0);
    QTRY_VERIFY(window.spline_widget->spline_poly.isEmpty());
}

void tst_fileflows::file_that_does_not_open() {
    const QString name = folder.filePath(QStringLiteral("socket.spl"));
    const Socket no_file(name);
    QVERIFY(no_file.bound);
    MainWindow window;
    SHOW(window);
    window.symetriclButton->click();
    window.p->spline.airfoilName = QStringLiteral("before");
    const ExpectedWarnings unopened(QStringLiteral("device not open"));
    const PaintCount paints(window.spline_widget);
    ModalGuard guard({ModalGuard::choose_file(name)});
    window.actionOpen_foil_spline->trigger();
    // Reading continues, yields zeros, and counts as successful.
    QCOMPARE(guard.count(), 1);
    QCOMPARE(state_of(window).toHex(), QByteArray(2 * whole_size, '0'));
    QVERIFY(paints.whole() > 0);
}

void tst_fileflows::short_file_data() {
    QTest::addColumn<int>("size");

    QTest::newRow("empty") << 0;
    QTest::newRow("within-the-counts") << 10;
    QTest::newRow("within-the-knots") << 500;
    QTest::newRow("within-the-points") << 2700;
    QTest::newRow("one-byte-missing") << whole_size - 1;
}

void tst_fileflows::short_file() {
    QFETCH(int, size);

    SplineFoil spline = distinct_spline();
    spline.airfoilName = QString();
    const QByteArray whole = baseline::spline_bytes(spline);
    QCOMPARE(whole.size(), whole_size);
    const QString name = folder.filePath(QStringLiteral("short.spl"));
    QVERIFY(make_file(name, whole.left(size)));
    MainWindow window;
    ModalGuard guard({ModalGuard::choose_file(name)});
    window.actionOpen_foil_spline->trigger();
    QCOMPARE(guard.count(), 1);
    // Complete items are read; the first truncated one and all after it are 0.
    const int whole_items = size < 4 ? 0 : size < 20 ? size / 4 * 4 : 20 + (size - 20) / 8 * 8;
    QByteArray expected = whole.left(whole_items);
    expected.append(QByteArray(whole_size - whole_items, '\0'));
    QCOMPARE(state_of(window).toHex(), expected.toHex());
}

AEROLITH_TEST_MAIN(tst_fileflows)
#include "tst_fileflows.moc"
