// SPDX-FileCopyrightText: Aerolith developers
// Functions that must fail. Each is run alone, and CTest looks for the failure.
#include "support/testmain.h"

#include <QMessageBox>
#include <QTest>

class tst_support_failures : public QObject {
    Q_OBJECT

private slots:
    void init() {}
    void rows_data();
    void rows();
    void warning();
    void second_warning();
    void warning_beside_expected();
    void open_window();
};

void tst_support_failures::rows_data() {
    QTest::addColumn<bool>("warns");
    QTest::newRow("first") << false;
    QTest::newRow("second") << true;
}

void tst_support_failures::rows() {
    QFETCH(bool, warns);
    if (warns)
        qWarning("in the second row");
}

void tst_support_failures::warning() {
    qWarning("in the first function");
}

void tst_support_failures::second_warning() {
    qWarning("in the second function");
}

void tst_support_failures::warning_beside_expected() {
    const ExpectedWarnings expected(QStringLiteral("known"));
    qWarning("known");
    qWarning("strange");
}

void tst_support_failures::open_window() {
    QMessageBox::information(nullptr, QStringLiteral("title"), QStringLiteral("question"));
}

AEROLITH_TEST_MAIN(tst_support_failures)
#include "tst_support_failures.moc"
