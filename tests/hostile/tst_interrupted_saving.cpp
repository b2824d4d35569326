// SPDX-FileCopyrightText: Aerolith developers
// Saving that is killed, and saving by several windows at the same time.
#include "document/savefile.h"
#include "hostile/savingtools.h"

#include <QFile>
#include <QTest>

#include <atomic>
#include <csignal>
#include <random>

#include <sched.h>
#include <sys/mman.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

class tst_interrupted_saving : public SavingTest {
    Q_OBJECT

private slots:
    void killed_data();
    void killed();
    void two_windows();
};

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

    std::mt19937 random(20260101);
    int found[2] = {};
    int saved = 0;
    int left_over = 0;
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
        saved += *saves;

        const QByteArray left = content(path(u"old"_s));
        QVERIFY2(left == contents[0] || left == contents[1], qPrintable(QString::number(i)));
        ++found[left == contents[1]];
        // Killed after the new file has got its name and before it replaces the old one.
        QStringList further = listing(dir->path());
        for (const QString& file : files)
            QVERIFY(further.removeOne(file));
        QVERIFY(further.size() <= 1);
        for (const QString& file : qAsConst(further)) {
            QVERIFY2(file.startsWith(u"old."_s), qPrintable(file));
            QVERIFY(QFile::remove(path(file)));
            ++left_over;
        }
    }
    qInfo("%d kills, %d saves, found %d times the one and %d times the other content, %d left over",
          kills, saved, found[0], found[1], left_over);
    QVERIFY(saved >= kills);
    QVERIFY(found[0] > 0 && found[1] > 0);
}

void tst_interrupted_saving::two_windows() {
    constexpr int windows = 3;
    constexpr int saves = 100;
    constexpr qsizetype size = 60'000;
    const QString name = path(u"old"_s);
    put(name, QByteArray(size, 'A'));
    const auto whole = [](const QByteArray& bytes) {
        return !bytes.isEmpty() && bytes == QByteArray(size - 7000 * (bytes[0] - 'A'), bytes[0]);
    };
    pid_t processes[windows];
    for (int w = 0; w < windows; ++w) {
        processes[w] = in_other_process([&] {
            for (int i = 0; i < saves; ++i) {
                if (!write_file(name, QByteArray(size - 7000 * w, char('A' + w))))
                    ::_exit(1);
            }
        });
    }
    for (int i = 0; i < saves; ++i)
        QVERIFY(whole(content(name)));
    for (const pid_t process : processes)
        QCOMPARE(result_of(process), 0);
    QVERIFY(whole(content(name)));
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
