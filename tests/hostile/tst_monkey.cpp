// SPDX-FileCopyrightText: Aerolith developers
// Random events on the main window. AEROLITH_MONKEY_EVENTS sets their number, AEROLITH_MONKEY_SEED
// the seed.
#include "hostile/monkey.h"
#include "support/testmain.h"

#include <QApplication>
#include <QTemporaryDir>
#include <QTest>

namespace {

const QString unsupported = QStringLiteral("This plugin does not support ");
// Names in damaged files have letters of scripts that no installed font supports.
const QString unknown_script = QStringLiteral("OpenType support missing for ");

} // namespace

class tst_monkey : public QObject {
    Q_OBJECT

private slots:
    void any_events();
    void one_seed_replays();
};

void tst_monkey::any_events() {
    const ExpectedWarnings ignored(unsupported);
    const ExpectedWarnings ignored_too(unknown_script);
    bool chosen = false;
    quint32 seed = quint32(qEnvironmentVariableIntValue("AEROLITH_MONKEY_SEED", &chosen));
    if (!chosen)
        seed = 1;
    const int events = qEnvironmentVariableIsSet("AEROLITH_MONKEY_EVENTS")
                           ? qEnvironmentVariableIntValue("AEROLITH_MONKEY_EVENTS")
                           : MONKEY_EVENTS;
    qInfo("AEROLITH_MONKEY_SEED=%u AEROLITH_MONKEY_EVENTS=%d", seed, events);
    const QTemporaryDir folder;
    Monkey monkey(seed, folder.path());
    for (int i = 0; i < events; ++i) {
        const QString broken = monkey.step();
        QVERIFY2(
            broken.isEmpty(),
            qPrintable(QStringLiteral("event %1, %2: %3").arg(i).arg(monkey.last_event(), broken)));
    }
    QVERIFY(monkey.paints() > 0);
    qInfo("longest event %.0f ms, longest of %d paints %.0f ms, digest %llx",
          1000.0 * monkey.longest_step(), monkey.paints(), 1000.0 * monkey.longest_paint(),
          static_cast<unsigned long long>(monkey.digest()));
}

void tst_monkey::one_seed_replays() {
    const ExpectedWarnings ignored(unsupported);
    const ExpectedWarnings ignored_too(unknown_script);
    const auto digest_of = [](quint32 seed) {
        const QTemporaryDir folder;
        Monkey monkey(seed, folder.path());
        for (int i = 0; i < 1000; ++i)
            monkey.step();
        return monkey.digest();
    };
    const quint64 first = digest_of(7);
    QCOMPARE(digest_of(7), first);
    QVERIFY(digest_of(8) != first);
}

int main(int argc, char* argv[]) {
    // A run may last for hours, and CTest has a limit of its own.
    qputenv("QTEST_FUNCTION_TIMEOUT", "86400000");
    // Requested paints come with the next events, not after a delay.
    qputenv("QT_QPA_UPDATE_IDLE_TIME", "0");
    const TestProcess process;
    QApplication application(argc, argv);
    QApplication::setQuitOnLastWindowClosed(false);
    GuardedTest<tst_monkey> test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_monkey.moc"
