// SPDX-FileCopyrightText: Aerolith developers
// The Fourier functions against sums of 50 digits, stored by dev/fourier_reference.py. Each row
// prints the largest error as a fraction of the largest input.
#include "numerics/constants.h"
#include "numerics/fourier.h"
#include "support/exactcompare.h"
#include "support/testmain.h"

#include <QFile>
#include <QHash>
#include <QTextStream>

#include <algorithm>
#include <cmath>
#include <functional>
#include <vector>

namespace {

constexpr double TOLERANCE = 1e-12;

struct StoredValue {
    int index;
    double value;
};

struct StoredCase {
    int order = 0;
    std::vector<double> x;
    std::vector<double> y;
    QHash<QString, QList<StoredValue>> values;
};

// The cases of the data file in file order; empty when it cannot be read.
QList<QPair<QString, StoredCase>> stored_cases() {
    QFile file(QStringLiteral(FOURIER_DATA));
    if (!file.open(QIODevice::ReadOnly | QIODevice::Text))
        return {};
    QTextStream stream(&file);
    QList<QPair<QString, StoredCase>> cases;
    QString line;
    while (stream.readLineInto(&line)) {
        const QStringList fields = line.split(QLatin1Char(' '));
        if (fields[0] == QLatin1String("#"))
            continue;
        if (fields[0] == QLatin1String("case"))
            cases.append({fields[1], {}});
        else if (fields[0] == QLatin1String("order"))
            cases.last().second.order = fields[1].toInt();
        else if (fields[0] == QLatin1String("x"))
            cases.last().second.x.push_back(fields[2].toDouble());
        else if (fields[0] == QLatin1String("y"))
            cases.last().second.y.push_back(fields[2].toDouble());
        else
            cases.last().second.values[fields[0]].append({fields[1].toInt(), fields[2].toDouble()});
    }
    return cases;
}

double largest(const std::vector<double>& values) {
    double most = 0.0;
    for (const double v : values)
        most = max_or_nan(most, std::abs(v));
    return most;
}

struct Fit {
    std::vector<double> An;
    std::vector<double> Bn;

    Fit(int order, std::vector<double> y) : An(std::size_t(order) + 1), Bn(std::size_t(order)) {
        F_coef(order, y.data(), An.data(), Bn.data());
    }
};

} // namespace

Q_DECLARE_METATYPE(StoredCase)

class tst_fourier_reference : public QObject {
    Q_OBJECT

private slots:
    void initTestCase();
    void coefficients_data() { add_rows("A"); }
    void coefficients();
    void single_sums_data() { add_rows("A"); }
    void single_sums();
    void f_theta_value_at_clustered_angles_data() { add_rows("proc"); }
    void f_theta_value_at_clustered_angles();
    void Fourier_Proc_data() { add_rows("proc"); }
    void Fourier_Proc();
    void f_k_value_data() { add_rows("value"); }
    void f_k_value();
    void Fourier_Cos_Proc_data() { add_rows("cosproc"); }
    void Fourier_Cos_Proc();
    void f_Dvalue_data() { add_rows("derivative"); }
    void f_Dvalue();
    void f_value_data() { add_rows("evenvalue"); }
    void f_value();
    void Fourier_Skeleton_data() { add_rows("skeleton"); }
    void Fourier_Skeleton();
    void Fourier_Derivate_data() { add_rows("slope"); }
    void Fourier_Derivate();
    void Fourier_Polygon_D2_data() { add_rows("second"); }
    void Fourier_Polygon_D2();

private:
    void add_rows(const char* name);
    void compare(const char* name, double scale, const std::function<double(int)>& function);

    const QList<QPair<QString, StoredCase>> cases = stored_cases();
};

void tst_fourier_reference::add_rows(const char* name) {
    QTest::addColumn<StoredCase>("stored");
    for (const auto& [tag, stored] : cases) {
        if (stored.values.contains(QLatin1String(name)))
            QTest::newRow(qPrintable(tag)) << stored;
    }
}

void tst_fourier_reference::compare(const char* name, double scale,
                                    const std::function<double(int)>& function) {
    QFETCH(StoredCase, stored);
    const QList<StoredValue> expected = stored.values.value(QLatin1String(name));
    QVERIFY(!expected.isEmpty());
    double worst = 0.0;
    for (const StoredValue& e : expected) {
        const double error = std::abs(function(e.index) - e.value) / scale;
        QVERIFY2(error <= TOLERANCE, qPrintable(QStringLiteral("%1 %2: %3 is not %4")
                                                    .arg(QLatin1String(name))
                                                    .arg(e.index)
                                                    .arg(exact_text(function(e.index)))
                                                    .arg(exact_text(e.value))));
        worst = max_or_nan(worst, error);
    }
    qInfo("largest error of %s: %.1e", name, worst);
}

void tst_fourier_reference::initTestCase() {
    QCOMPARE(cases.size(), 14);
    for (const auto& [tag, stored] : cases) {
        QVERIFY2(stored.order > 0, qPrintable(tag));
        QVERIFY2(int(stored.y.size()) / 2 == stored.order, qPrintable(tag));
    }
}

void tst_fourier_reference::coefficients() {
    QFETCH(StoredCase, stored);
    const Fit fit(stored.order, stored.y);
    compare("A", largest(stored.y), [&](int m) { return fit.An[std::size_t(m)]; });
    compare("B", largest(stored.y), [&](int m) { return fit.Bn[std::size_t(m)]; });
}

// Divided by the order, which makes them coefficients.
void tst_fourier_reference::single_sums() {
    QFETCH(StoredCase, stored);
    const int N = stored.order;
    std::vector<double> Tp(stored.y.size());
    for (std::size_t k = 0; k < Tp.size(); ++k)
        Tp[k] = double(k) * Pi / N;
    double* y = stored.y.data();
    compare("A", largest(stored.y), [&](int m) { return fSum_yn_cos(N, Tp.data(), y, m) / N; });
    compare("B", largest(stored.y), [&](int m) { return fSum_yn_sin(N, Tp.data(), y, m) / N; });
}

void tst_fourier_reference::f_theta_value_at_clustered_angles() {
    QFETCH(StoredCase, stored);
    Fit fit(stored.order, stored.y);
    compare("proc", largest(stored.y), [&](int i) {
        return f_theta_value(stored.order, fit.An.data(), fit.Bn.data(), f_theta(i, 1000));
    });
}

void tst_fourier_reference::Fourier_Proc() {
    QFETCH(StoredCase, stored);
    std::vector<double> out(1000);
    ::Fourier_Proc(stored.order, stored.y.data(), out.data());
    compare("proc", largest(stored.y), [&](int i) { return out[std::size_t(i)]; });
}

void tst_fourier_reference::f_k_value() {
    QFETCH(StoredCase, stored);
    Fit fit(stored.order, stored.y);
    compare("value", largest(stored.y),
            [&](int k) { return ::f_k_value(stored.order, fit.An.data(), fit.Bn.data(), k); });
}

void tst_fourier_reference::Fourier_Cos_Proc() {
    QFETCH(StoredCase, stored);
    std::vector<double> out(1000);
    ::Fourier_Cos_Proc(stored.order, stored.y.data(), out.data());
    compare("cosproc", largest(stored.y), [&](int k) { return out[std::size_t(k)]; });
}

void tst_fourier_reference::f_Dvalue() {
    QFETCH(StoredCase, stored);
    Fit fit(stored.order, stored.y);
    compare("derivative", largest(stored.y),
            [&](int k) { return ::f_Dvalue(stored.order, fit.An.data(), fit.Bn.data(), k); });
}

void tst_fourier_reference::f_value() {
    QFETCH(StoredCase, stored);
    Fit fit(stored.order, stored.y);
    compare("evenvalue", largest(stored.y), [&](int k) {
        return ::f_value(int(stored.y.size()), stored.order, fit.An.data(), fit.Bn.data(), k);
    });
}

void tst_fourier_reference::Fourier_Skeleton() {
    QFETCH(StoredCase, stored);
    std::vector<double> out(stored.y.size());
    ::Fourier_Skeleton(int(out.size()), stored.order, stored.y.data(), out.data());
    compare("skeleton", largest(stored.y), [&](int k) { return out[std::size_t(k)]; });
}

void tst_fourier_reference::Fourier_Derivate() {
    QFETCH(StoredCase, stored);
    std::vector<double> out(stored.y.size() + 1);
    ::Fourier_Derivate(int(stored.y.size()), stored.x.data(), stored.y.data(), out.data());
    QVERIFY2(std::count(out.begin(), out.end(), 0.0) > 0, "both sides of the threshold on dx");
    compare("slope", max_or_nan(largest(stored.x), largest(stored.y)),
            [&](int k) { return out[std::size_t(k)]; });
}

void tst_fourier_reference::Fourier_Polygon_D2() {
    QFETCH(StoredCase, stored);
    QPolygonF poly;
    for (const double y : stored.y)
        poly.append(QPointF(0.0, y));
    std::vector<double> out(1000);
    ::Fourier_Polygon_D2(poly, out.data());
    compare("second", largest(stored.y), [&](int k) { return out[std::size_t(k)]; });
}

AEROLITH_GUILESS_TEST_MAIN(tst_fourier_reference)
#include "tst_fourier_reference.moc"
