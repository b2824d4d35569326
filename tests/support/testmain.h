// SPDX-FileCopyrightText: Aerolith developers
// The main functions of the tests: an unexpected warning from Qt fails the test function, and no
// modal window waits for ever.
#pragma once

#include "support/modalguard.h"

#include <QApplication>
#include <QCoreApplication>
#include <QMetaObject>
#include <QRegularExpression>
#include <QString>
#include <QTemporaryDir>
#include <QTest>

/// During its lifetime, removes warnings that contain a text from Qt's output: for warnings in any
/// number. (QTest::ignoreMessage() has to announce each one.)
class ExpectedWarnings {
public:
    explicit ExpectedWarnings(const QString& text);
    ~ExpectedWarnings();
    ExpectedWarnings(const ExpectedWarnings&) = delete;
    ExpectedWarnings& operator=(const ExpectedWarnings&) = delete;

    /// The number of warnings so far.
    int count() const { return came; }

private:
    static void handle(QtMsgType type, const QMessageLogContext& context, const QString& message);

    QString wanted;
    int came = 0;
    ExpectedWarnings* outer;
    QtMessageHandler previous;
};

/// A test object that calls QTest::failOnWarning() before each of its functions. Qt Test forgets
/// the call at the end of a test function, and an init() of a base class would be hidden by one in
/// the test. So the call is made where all functions are dispatched.
template<typename Test>
class GuardedTest : public Test {
public:
    const QMetaObject* metaObject() const override {
        static const QMetaObject guarded = [] {
            QMetaObject object = Test::staticMetaObject;
            object.d.static_metacall = &GuardedTest::dispatch;
            return object;
        }();
        return &guarded;
    }

private:
    // All but a message of the offscreen platform about every window.
    static QString pattern() { return QStringLiteral("^(?!This plugin does not support )"); }

    static void dispatch(QObject* object, QMetaObject::Call call, int index, void** arguments) {
        if (call == QMetaObject::InvokeMetaMethod)
            QTest::failOnWarning(QRegularExpression(pattern()));
        Test::staticMetaObject.d.static_metacall(object, call, index, arguments);
    }
};

/// Settings needed before the application object exists: Qt's own dialogs, and a home folder for
/// this run alone, because file dialogs keep their history there.
class TestProcess {
public:
    TestProcess();

private:
    QTemporaryDir home;
};

/// main() of a test with widgets.
#define AEROLITH_TEST_MAIN(Class)                                                                  \
    int main(int argc, char** argv) {                                                              \
        const TestProcess process;                                                                 \
        QApplication application(argc, argv);                                                      \
        const ModalWatch watch;                                                                    \
        GuardedTest<Class> test;                                                                   \
        QTEST_SET_MAIN_SOURCE_PATH                                                                 \
        return QTest::qExec(&test, argc, argv);                                                    \
    }

/// main() of a test without widgets.
#define AEROLITH_GUILESS_TEST_MAIN(Class)                                                          \
    int main(int argc, char** argv) {                                                              \
        const TestProcess process;                                                                 \
        QCoreApplication application(argc, argv);                                                  \
        GuardedTest<Class> test;                                                                   \
        QTEST_SET_MAIN_SOURCE_PATH                                                                 \
        return QTest::qExec(&test, argc, argv);                                                    \
    }
