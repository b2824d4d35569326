// SPDX-FileCopyrightText: Aerolith developers
// Saving that is killed, and saving by several windows at once.
#include "document/savefile.h"
#include "hostile/savingtools.h"

#include <QCryptographicHash>
#include <QDir>
#include <QTemporaryDir>
#include <QTest>

#include <atomic>
#include <csignal>
#include <memory>
#include <random>

#include <sched.h>
#include <sys/mman.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace {

const QByteArray old_content(5000, 'o');
const QByteArray new_content(3000, 'n');

// That the new file has for a moment before it becomes "old".
QString name_of_new_file() {
    const QByteArray hash = QCryptographicHash::hash("old", QCryptographicHash::Sha1).toHex();
    return u".aerolith-"_s + QString::fromLatin1(hash);
}

} // namespace

class tst_interrupted_saving : public QObject {
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void cleanup();
    void killed_data();
    void killed();
    void stale_name_removed();
    void name_in_the_way_data();
    void name_in_the_way();
    void two_windows_data();
    void two_windows();
    void ended_processes_not_waited_for();
    void no_further_process();

private:
    QString path(const QString& name) const { return dir->filePath(name); }

    std::unique_ptr<QTemporaryDir> dir;
};

void tst_interrupted_saving::initTestCase() {
    QVERIFY(::geteuid() != 0);
}

void tst_interrupted_saving::init() {
    dir = std::make_unique<QTemporaryDir>();
    QVERIFY(dir->isValid());
}

void tst_interrupted_saving::cleanup() {
    dir.reset();
}

void tst_interrupted_saving::killed_data() {
    QTest::addColumn<qsizetype>("size");
    QTest::addColumn<bool>("through_link");
    QTest::addColumn<int>("kills");
    QTest::newRow("small") << qsizetype(4000) << false << 200;
    QTest::newRow("large") << qsizetype(2'000'000) << false << 60;
    QTest::newRow("through-link") << qsizetype(4000) << true << 60;
}

void tst_interrupted_saving::killed() {
    QFETCH(qsizetype, size);
    QFETCH(bool, through_link);
    QFETCH(int, kills);
    const QByteArray contents[] = {QByteArray(size, 'a'), QByteArray(size / 2, 'b')};
    put(path(u"old"_s), contents[0]);
    if (through_link)
        soft_link(u"old"_s, path(u"link"_s));
    const QString name = path(through_link ? u"link"_s : u"old"_s);
    const QStringList files = listing(dir->path());
    auto* saves = static_cast<std::atomic<int>*>(::mmap(nullptr, sizeof(std::atomic<int>),
                                                        PROT_READ | PROT_WRITE,
                                                        MAP_SHARED | MAP_ANONYMOUS, -1, 0));
    QVERIFY(saves != MAP_FAILED);
    const auto unmap = qScopeGuard([&] { ::munmap(saves, sizeof(std::atomic<int>)); });

    QCOMPARE(::prctl(PR_SET_CHILD_SUBREAPER, 1), 0);
    std::mt19937 random(20260101);
    int found[2] = {};
    int saved = 0;
    for (int i = 0; i < kills; ++i) {
        *saves = 0;
        const pid_t process = in_other_process([&] {
            for (int k = i; write_file(name, contents[k % 2]); ++k)
                ++*saves;
        });
        while (*saves == 0)
            ::sched_yield();
        ::usleep(useconds_t(random() % 10'000));
        QCOMPARE(::kill(process, SIGKILL), 0);
        QCOMPARE(result_of(process), -1);
        // The process that was naming the new file just then ends by itself.
        while (::wait(nullptr) > 0) {
        }
        saved += *saves;

        const QByteArray left = content(path(u"old"_s));
        QVERIFY2(left == contents[0] || left == contents[1], qPrintable(QString::number(i)));
        ++found[left == contents[1]];
        QCOMPARE(listing(dir->path()), files);
    }
    qInfo("%d kills, %d saves, found %d times the one and %d times the other content", kills, saved,
          found[0], found[1]);
    QVERIFY(saved >= kills);
    QVERIFY(found[0] > 0 && found[1] > 0);
}

// Somebody who ended the naming process, too, or a power failure has left its name.
void tst_interrupted_saving::stale_name_removed() {
    put(path(u"old"_s), old_content);
    put(path(name_of_new_file()), "half");
    QCOMPARE(listing(dir->path()).size(), 2);
    QVERIFY(write_file(path(u"old"_s), new_content));
    QCOMPARE(listing(dir->path()), QStringList(u"old"_s));
    QCOMPARE(content(path(u"old"_s)), new_content);
}

void tst_interrupted_saving::name_in_the_way_data() {
    QTest::addColumn<bool>("through_link");
    QTest::newRow("folder") << false;
    QTest::newRow("folder-through-link") << true;
}

// What cannot be removed does not forbid saving.
void tst_interrupted_saving::name_in_the_way() {
    QFETCH(bool, through_link);
    put(path(u"old"_s), old_content);
    QVERIFY(QDir(dir->path()).mkdir(name_of_new_file()));
    if (through_link)
        soft_link(u"old"_s, path(u"link"_s));
    const QStringList files = listing(dir->path());
    QVERIFY(write_file(path(through_link ? u"link"_s : u"old"_s), new_content));
    QCOMPARE(content(path(u"old"_s)), new_content);
    QCOMPARE(listing(dir->path()), files);
}

void tst_interrupted_saving::two_windows_data() {
    QTest::addColumn<qsizetype>("size");
    QTest::addColumn<bool>("in_place");
    QTest::addColumn<int>("rounds");
    QTest::addColumn<int>("saves");
    QTest::newRow("replacing") << qsizetype(60'000) << false << 1 << 100;
    QTest::newRow("in-place") << qsizetype(1'000'000) << true << 40 << 1;
}

void tst_interrupted_saving::two_windows() {
    QFETCH(qsizetype, size);
    QFETCH(bool, in_place);
    QFETCH(int, rounds);
    QFETCH(int, saves);
    constexpr int windows = 3;
    const QString name = path(u"old"_s);
    put(name, QByteArray(size, 'A'));
    if (in_place)
        hard_link(name, path(u"other"_s));
    const QStringList files = listing(dir->path());
    const auto whole = [size](const QByteArray& bytes) {
        return !bytes.isEmpty() && bytes == QByteArray(size - 7000 * (bytes[0] - 'A'), bytes[0]);
    };

    for (int round = 0; round < rounds; ++round) {
        pid_t processes[windows];
        for (int w = 0; w < windows; ++w) {
            processes[w] = in_other_process([&] {
                const QByteArray own(size - 7000 * w, char('A' + w));
                for (int i = 0; i < saves; ++i) {
                    if (!write_file(name, own))
                        ::_exit(1);
                }
            });
        }
        // A reader of a file that is written in place may see it half written.
        for (int i = 0; i < saves && !in_place; ++i)
            QVERIFY(whole(content(name)));
        for (const pid_t process : processes)
            QCOMPARE(result_of(process), 0);
        QVERIFY(whole(content(name)));
        QCOMPARE(listing(dir->path()), files);
    }
}

void tst_interrupted_saving::ended_processes_not_waited_for() {
    put(path(u"old"_s), old_content);
    const ino_t before = status_of(path(u"old"_s)).st_ino;
    const auto handler = std::signal(SIGCHLD, SIG_IGN);
    const bool written = write_file(path(u"old"_s), new_content);
    std::signal(SIGCHLD, handler);
    QVERIFY(written);
    QVERIFY(status_of(path(u"old"_s)).st_ino != before);
    QCOMPARE(content(path(u"old"_s)), new_content);
    QCOMPARE(listing(dir->path()), QStringList(u"old"_s));
}

void tst_interrupted_saving::no_further_process() {
    put(path(u"old"_s), old_content);
    const ino_t before = status_of(path(u"old"_s)).st_ino;
    const bool written = [this] {
        const Limit limited(RLIMIT_NPROC, 0);
        const pid_t process = ::fork();
        if (process == 0)
            ::_exit(0);
        if (process > 0)
            ::waitpid(process, nullptr, 0);
        return process < 0 && write_file(path(u"old"_s), new_content);
    }();
    QVERIFY(written);
    QVERIFY(status_of(path(u"old"_s)).st_ino != before);
    QCOMPARE(content(path(u"old"_s)), new_content);
    QCOMPARE(listing(dir->path()), QStringList(u"old"_s));
}

int main(int argc, char* argv[]) {
    return run_as_ordinary_user([&] {
        QCoreApplication application(argc, argv);
        tst_interrupted_saving test;
        return QTest::qExec(&test, argc, argv);
    });
}

#include "tst_interrupted_saving.moc"
