// SPDX-FileCopyrightText: Aerolith developers
// Jobs on several threads, with their results in order.
#include "cli/jobs.h"
#include "support/testmain.h"

#include <QTest>

#include <atomic>
#include <chrono>
#include <thread>
#include <vector>

class CliJobs : public QObject {
    Q_OBJECT

private slots:
    void in_order_data() {
        QTest::addColumn<int>("count");
        QTest::addColumn<int>("threads");
        for (const int count : {0, 1, 2, 7, 1000}) {
            for (const int threads : {0, 1, 2, 3, 16})
                QTest::addRow("%d-works-%d-threads", count, threads) << count << threads;
        }
    }
    void in_order() {
        QFETCH(const int, count);
        QFETCH(const int, threads);
        std::vector<int> taken;
        std::atomic<int> done = 0;
        cli::run_in_order<int>(
            std::size_t(count), threads,
            [&](std::size_t i) {
                ++done;
                return int(i) * 3;
            },
            [&](std::size_t i, int& result) {
                taken.push_back(result);
                return result == int(i) * 3;
            });
        QCOMPARE(done.load(), count);
        QCOMPARE(int(taken.size()), count);
        for (int i = 0; i < count; ++i)
            QCOMPARE(taken[std::size_t(i)], 3 * i);
    }

    // The first result comes late. The others wait, at most as many as the window holds.
    void waits_within_the_window() {
        constexpr int threads = 3;
        std::atomic<int> started = 0;
        std::atomic<bool> release = false;
        std::atomic<int> started_before_release = 0;
        std::thread watch([&] {
            // If no job starts for a while, all that may start have started.
            int seen = -1;
            while (seen != started) {
                seen = started;
                std::this_thread::sleep_for(std::chrono::milliseconds(50));
            }
            started_before_release = seen;
            release = true;
        });
        cli::run_in_order<int>(
            100, threads,
            [&](std::size_t i) {
                ++started;
                while (i == 0 && !release)
                    std::this_thread::yield();
                return int(i);
            },
            [](std::size_t, int&) { return true; });
        watch.join();
        QCOMPARE(started.load(), 100);
        QCOMPARE(started_before_release.load(), 4 * threads);
    }

    void stops_when_told_data() {
        QTest::addColumn<int>("threads");
        QTest::newRow("one-thread") << 1;
        QTest::newRow("four-threads") << 4;
    }
    void stops_when_told() {
        QFETCH(const int, threads);
        std::atomic<int> started = 0;
        int taken = 0;
        cli::run_in_order<int>(
            10000, threads, [&](std::size_t) { return ++started; },
            [&](std::size_t, int&) { return ++taken < 5; });
        QCOMPARE(taken, 5);
        QVERIFY(started <= 5 + 4 * threads);
    }
};

AEROLITH_GUILESS_TEST_MAIN(CliJobs)
#include "tst_cli_jobs.moc"
