// SPDX-FileCopyrightText: Aerolith developers
// Hostile files: huge, damaged, changing, or not regular.
#include "airfoil/airfoil.h"
#include "app/mainwindow.h"
#include "document/readfile.h"
#include "support/modalguard.h"
#include "support/testmain.h"

#include <QDir>
#include <QFile>
#include <QScopeGuard>
#include <QStringConverter>
#include <QStringEncoder>
#include <QTemporaryDir>

#include <atomic>
#include <cmath>
#include <ctime>
#include <functional>
#include <thread>

#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

// The sanitizers take several times the memory that the program requests.
#if defined(__SANITIZE_ADDRESS__)
#define MEMORY_IS_MEASURED 0
#elif defined(__has_feature)
#if __has_feature(address_sanitizer)
#define MEMORY_IS_MEASURED 0
#endif
#endif
#ifndef MEMORY_IS_MEASURED
#define MEMORY_IS_MEASURED 1
#endif

namespace {

// Rows of 18 bytes, as in real tables: an outline, or three columns from the leading edge.
QByteArray rows(int count, int columns) {
    QByteArray bytes = "title\n";
    for (int i = 0; i < count; ++i) {
        const double angle = (columns == 2 ? 2.0 : 0.5) * Pi * i / (count - 1);
        const double x = columns == 2 ? 0.5 + 0.5 * std::cos(angle) : std::sin(angle);
        bytes += QByteArray::number(x, 'f', 6);
        for (int k = 1; k < columns; ++k)
            bytes += ' ' + QByteArray::number((k == 1 ? 0.1 : -0.1) * std::sin(angle), 'f', 6);
        bytes += '\n';
    }
    return bytes;
}

QByteArray half_contour(int count) {
    QByteArray bytes = "title\n\n\n" + QByteArray::number(count) + ". 0.\n";
    for (int i = 0; i < count; ++i)
        bytes += QByteArray::number(double(i) / count, 'f', 6) + " 0.050000\n";
    return bytes;
}

// A line of the process's status, bytes.
qsizetype status_bytes(const QByteArray& key) {
    QFile status(u"/proc/self/status"_s);
    if (!status.open(QIODevice::ReadOnly))
        return 0;
    for (const QByteArray& line : status.readAll().split('\n')) {
        if (line.startsWith(key))
            return line.mid(key.size()).chopped(2).trimmed().toLongLong() * 1024;
    }
    return 0;
}

qsizetype peak_bytes() {
    return status_bytes("VmHWM:");
}

rlim_t address_space() {
    return rlim_t(status_bytes("VmSize:"));
}

void forget_peak() {
    QFile file(u"/proc/self/clear_refs"_s);
    if (file.open(QIODevice::WriteOnly))
        file.write("5");
}

double seconds(std::clock_t since) {
    return double(std::clock() - since) / CLOCKS_PER_SEC;
}

} // namespace

class tst_hostile_files : public QObject {
    Q_OBJECT

private slots:
    void init();
    void large_tables_data();
    void large_tables();
    void awkward_tables_data();
    void awkward_tables();
    void long_fields_data();
    void long_fields();
    void larger_than_memory_data();
    void larger_than_memory();
    void not_regular_data();
    void not_regular();
    void shrinking();
    void long_spline_name();
    void markup_in_name();

private:
    QString put(const QByteArray& bytes) const {
        const QString name = dir->filePath(u"table.dat"_s);
        QFile file(name);
        if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size())
            qFatal("cannot write the file of the test");
        return name;
    }

    std::unique_ptr<QTemporaryDir> dir;
};

void tst_hostile_files::init() {
    dir = std::make_unique<QTemporaryDir>();
    QVERIFY(dir->isValid());
    *GetDataStruct() = ParaStruct();
}

void tst_hostile_files::large_tables_data() {
    QTest::addColumn<std::function<QByteArray()>>("make");
    QTest::addColumn<qsizetype>("points");
    const auto row = [](const char* name, const std::function<QByteArray()>& make, int points) {
        QTest::newRow(name) << make << qsizetype(points);
    };
    row(
        "million-rows", [] { return rows(1'000'000, 2); }, 1'000'000);
    row(
        "digits-of-100-megabytes", [] { return QByteArray(100'000'000, '1'); }, 0);
    row(
        "digits-in-second-field",
        [] { return "1.0 0.0\n0.5 0.1\n0.0 0.0\n0.5 " + QByteArray(20'000'000, '7') + '\n'; }, 4);
    row(
        "half-contour-of-100000-rows", [] { return half_contour(100'000); }, 199'999);
    row(
        "three-columns-of-100000-rows", [] { return rows(100'000, 3); }, 200'000);
    row(
        "title-of-20-megabytes", [] { return QByteArray(20'000'000, 'x') + '\n' + rows(9, 2); }, 9);
}

// Read, listed and painted as in the window.
void tst_hostile_files::large_tables() {
    QFETCH(std::function<QByteArray()>, make);
    QFETCH(qsizetype, points);
    MainWindow window;
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    const QString name = put(make());
    const qint64 size = QFileInfo(name).size();
    forget_peak();
    const std::clock_t begin = std::clock();

    ModalGuard guard({ModalGuard::choose_file(name)});
    window.on_actionOpen_backround_template_triggered();
    QCoreApplication::processEvents();

    qInfo("%lld bytes, %.1f s, peak %lld bytes", size, seconds(begin), qint64(peak_bytes()));
    QCOMPARE(window.p->baseAirfoilName, name);
    // Rounding may move the repeated end of an outline outside the chord.
    QVERIFY(qAbs(window.p->baseAirfoil.size() - points) <= 2);
    QVERIFY(seconds(begin) < 60.0);
    // The program itself takes some thirty megabytes.
    constexpr qint64 least_limit = 100'000'000;
    if (MEMORY_IS_MEASURED)
        QVERIFY(peak_bytes() < std::max(20 * size, least_limit));
    const QString listed = window.tableEdit->toPlainText();
    QVERIFY(listed == airfoil_table(u" airfoil table \t\n"_s, window.p->baseAirfoil, 1));

    // The window stays responsive with all of it on the screen.
    const std::clock_t pressed = std::clock();
    QTest::mouseClick(window.symetriclButton, Qt::LeftButton);
    QCoreApplication::processEvents();
    qInfo("%.2f s to answer a button", seconds(pressed));
    QVERIFY(window.p->spline.num_pnt > 0);
    QVERIFY(seconds(pressed) < 20.0);
}

void tst_hostile_files::awkward_tables_data() {
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<qsizetype>("points");
    const auto row = [](const char* name, const QByteArray& bytes, int points) {
        QTest::newRow(name) << bytes << qsizetype(points);
    };
    const auto wide = [](QStringConverter::Encoding encoding) {
        QStringEncoder encoder(encoding, QStringConverter::Flag::WriteBom);
        return QByteArray(encoder.encode(QString::fromLatin1(rows(5, 2))));
    };
    row("empty", "", 0);
    row("nul-bytes-only", QByteArray(100'000, '\0'), 0);
    row("nul-bytes-as-separators", QByteArray("1.0\0 0.0\n0.5\0 0.1\n0.0\0 0.0\n", 27), 3);
    row("utf-16-little-endian", wide(QStringConverter::Utf16LE), 5);
    row("utf-16-big-endian", wide(QStringConverter::Utf16BE), 5);
    row("utf-32", wide(QStringConverter::Utf32LE), 5);
    row("lone-carriage-returns", rows(5, 2).replace('\n', '\r'), 0);
    row("no-final-line-feed", rows(5, 2).chopped(1), 5);
    row("half-contour-of-1001-rows", half_contour(1001), 2001);
    row("three-columns-of-1001-rows", rows(1001, 3), 2002);
    row("line-feeds-only", QByteArray(1'000'000, '\n'), 0);
    row("points-only", QByteArray(1'000'000, '.'), 0);
    row("one-place", QByteArray("0.5 0.5\n").repeated(5), 5);
}

void tst_hostile_files::awkward_tables() {
    QFETCH(QByteArray, bytes);
    QFETCH(qsizetype, points);
    const QString name = put(bytes);
    QCOMPARE(airfoil_Read_All(name).size(), points);

    MainWindow window;
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    window.p->baseAirfoil = airfoil_Read(name);
    window.Write_BaseTable(window.p->baseAirfoil);
    emit window.repaint_all();
    FoilText_Read(name);
}

void tst_hostile_files::long_fields_data() {
    QTest::addColumn<QByteArray>("field");
    QTest::newRow("300-digits") << QByteArray(300, '9');
    QTest::newRow("300-decimals") << "0." + QByteArray(300, '3');
    for (const int size : {4095, 4096, 4097, 100'000}) {
        const QByteArray zeros(size, '0');
        QTest::addRow("decimals-%d", size) << "-0." + QByteArray(size, '3');
        QTest::addRow("without-whole-%d", size) << "." + QByteArray(size, '7');
        QTest::addRow("zeros-%d", size) << zeros;
        QTest::addRow("zeros-before-%d", size) << zeros + "12.5";
        QTest::addRow("zeros-behind-%d", size) << "12.5" + zeros;
        QTest::addRow("digits-%d", size) << QByteArray(size, '1');
        QTest::addRow("negative-zeros-%d", size) << '-' + zeros;
        QTest::addRow("two-points-%d", size) << "1." + QByteArray(size, '1') + ".5";
        QTest::addRow("inner-minus-%d", size) << QByteArray(size, '1') + "-5";
        QTest::addRow("points-%d", size) << QByteArray(size, '.');
        // The midpoint of two single-precision numbers, and slightly more and less.
        QTest::addRow("middle-%d", size) << "1.000000059604644775390625" + zeros;
        // Numbers whose double shows on which side of the midpoint they are.
        QTest::addRow("near-middle-%d", size)
            << "1.00000005960464488641292746251565404236316680908203125" + zeros + '1';
        QTest::addRow("above-middle-%d", size) << "1.000000059604644775390625" + zeros + '1';
        QTest::addRow("below-middle-%d", size)
            << "1.00000005960464477539062499" + QByteArray(size, '9');
    }
}

// Whatever the length of a field, its number is the one that Qt reads.
void tst_hostile_files::long_fields() {
    QFETCH(QByteArray, field);
    bool ok = false;
    const double value = Repair_NumString(QString::fromLatin1(field)).toDouble(&ok);
    const double expected = ok && qAbs(value) <= 3.4028234663852886e38 ? double(float(value)) : 0.0;
    const QPolygonF outline = Read_Normal(put("1.0 0.0\n" + field + " 0.5\n0.25 " + field + '\n'));
    QCOMPARE(outline.size(), 3);
    QVERIFY(outline[1].x() == expected);
    QVERIFY(outline[2].y() == expected);
    QCOMPARE(std::signbit(outline[1].x()), std::signbit(expected));
}

void tst_hostile_files::larger_than_memory_data() {
    QTest::addColumn<qint64>("size");
    QTest::addColumn<bool>("is_limited");
    QTest::newRow("terabyte") << (qint64(1) << 40) << false;
    QTest::newRow("just-above-the-longest") << longest_file + 1 << false;
    QTest::newRow("more-than-is-left") << qint64(200'000'000) << true;
}

// Files with holes, whose first bytes claim a name of 4 GB.
void tst_hostile_files::larger_than_memory() {
    QFETCH(qint64, size);
    QFETCH(bool, is_limited);
    if (is_limited && !MEMORY_IS_MEASURED)
        QSKIP("The sanitizers reserve more than any limit.");
    const QString name = put(QByteArray::fromHex("FFFFFFFC"));
    QVERIFY(QFile::resize(name, size));
    rlimit before = {};
    QCOMPARE(::getrlimit(RLIMIT_AS, &before), 0);
    const auto restore = qScopeGuard([&] { ::setrlimit(RLIMIT_AS, &before); });
    if (is_limited) {
        const rlimit limit = {address_space() + 100'000'000, before.rlim_max};
        QCOMPARE(::setrlimit(RLIMIT_AS, &limit), 0);
    }

    for (const auto reader :
         {airfoil_Read, airfoil_Read_All, Read_Normal, Read_Symetric, Read_Eppler})
        QVERIFY(reader(name).isEmpty());
    QVERIFY(FoilText_Read(name).isEmpty());
    myOpenFile files;
    files.p->spline.num_pnt = 7;
    QCOMPARE(files.ReadParaStream(name), 1);
    QCOMPARE(files.p->spline.num_pnt, 0);
}

void tst_hostile_files::not_regular_data() {
    QTest::addColumn<QString>("kind");
    QTest::newRow("folder") << u"folder"_s;
    QTest::newRow("pipe-without-writer") << u"pipe"_s;
    QTest::newRow("link-to-pipe") << u"link"_s;
    QTest::newRow("endless-device") << u"/dev/zero"_s;
    QTest::newRow("missing") << u"missing"_s;
}

// The program waits for none of them: reading a pipe without a writer would never end.
void tst_hostile_files::not_regular() {
    QFETCH(QString, kind);
    QVERIFY(QDir(dir->path()).mkdir(u"folder"_s));
    const QByteArray pipe = QFile::encodeName(dir->filePath(u"pipe"_s));
    QCOMPARE(::mkfifo(pipe.constData(), 0600), 0);
    QVERIFY(QFile::link(dir->filePath(u"pipe"_s), dir->filePath(u"link"_s)));
    const QString name = kind.startsWith(u'/') ? kind : dir->filePath(kind);

    for (const auto reader :
         {airfoil_Read, airfoil_Read_All, Read_Normal, Read_Symetric, Read_Eppler})
        QVERIFY(reader(name).isEmpty());
    QVERIFY(FoilText_Read(name).isEmpty());
    if (kind == u"missing"_s)
        return;
    myOpenFile files;
    files.p->spline.num_pnt = 7;
    QCOMPARE(files.ReadParaStream(name), 1);
    QCOMPARE(files.p->spline.num_pnt, 0);
}

// A file that grows and shrinks while it is read gives some outline.
void tst_hostile_files::shrinking() {
    const QByteArray whole = rows(20'000, 2);
    const QString name = put(whole);
    std::atomic<bool> done = false;
    std::thread other([&, path = QFile::encodeName(name)] {
        for (unsigned i = 0; !done; ++i) {
            QFile file(QFile::decodeName(path));
            if (file.open(QIODevice::ReadWrite)) {
                file.resize(i * 7919 % whole.size());
                file.resize(whole.size());
                file.write(whole);
            }
        }
    });
    qsizetype longest = 0;
    for (int i = 0; i < 100; ++i) {
        longest = std::max(longest, airfoil_Read(name).size());
        longest = std::max(longest, Read_Eppler(name).size() / 2);
        FoilText_Read(name);
    }
    done = true;
    other.join();
    QVERIFY(longest > 0 && longest <= 20'002);
}

void tst_hostile_files::long_spline_name() {
    MainWindow window;
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    window.spline_widget->Generate_symetric_spline();
    window.p->spline.airfoilName = QString(50'000'000, u'x');
    const QString name = dir->filePath(u"long.spl"_s);
    QCOMPARE(window.opf->WriteParaStream(name), 1);
    QCOMPARE(window.opf->ReadParaStream(name), 1);
    QCOMPARE(window.p->spline.airfoilName.size(), 50'000'000);

    const std::clock_t begin = std::clock();
    constexpr int paints = 10;
    for (int i = 0; i < paints; ++i)
        window.spline_widget->repaint();
    qInfo("%.1f ms a paint", 1000.0 * seconds(begin) / paints);
    QVERIFY(seconds(begin) / paints < 0.1);
}

void tst_hostile_files::markup_in_name() {
    const QString name = dir->filePath(u"<h1>big</h1><img src=x>.spl"_s);
    ModalGuard guard;
    myOpenFile files;
    QCOMPARE(files.ReadParaStream(name), 0);
    QCOMPARE(guard.count(), 1);
    QCOMPARE(guard.seen().text, name + u" warning *** :file is missing "_s);
    QCOMPARE(guard.seen().text_format, Qt::PlainText);
}

AEROLITH_TEST_MAIN(tst_hostile_files)

#include "tst_hostile_files.moc"
