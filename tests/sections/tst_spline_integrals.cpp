// SPDX-FileCopyrightText: Aerolith developers
// Length, area and curvature of splines from their basis functions, integrated span by span.
#include "numerics/b_spline.h"
#include "outlines.h"
#include "sections/measure.h"
#include "sections/plane.h"
#include "support/exactcompare.h"
#include "support/testmain.h"

using namespace sections;

namespace {

// The curve with its derivatives with respect to the knot parameter, from those of the basis
// functions: N' = d (N[i, d-1] / (t[i+d] - t[i]) - N[i+1, d-1] / (t[i+d+1] - t[i+1])).
class BasisCurve {
public:
    explicit BasisCurve(const SplineFoil& spline) : foil(spline) {}

    struct Values {
        QPointF point, first, second;
    };
    Values at(double t) {
        // Sums of basis values and their derivatives, with the points and alone.
        QPointF a[3];
        double r[3] = {};
        for (int i = 0; i < foil.num_pnt; ++i) {
            const double n[] = {basis(i, 2, t, 0), basis(i, 2, t, 1), basis(i, 2, t, 2)};
            for (int k = 0; k < 3; ++k) {
                a[k] += n[k] * foil.CP[i];
                r[k] += n[k];
            }
        }
        const QPointF c = a[0] / r[0];
        const QPointF d = (a[1] - r[1] * c) / r[0];
        return {c, d, (a[2] - 2.0 * r[1] * d - r[2] * c) / r[0]};
    }

private:
    double basis(int i, int degree, double t, int derivative) {
        if (derivative == 0)
            return deBoor(i, degree, foil.b_knots, t);
        const auto share = [&](int j) {
            const double width = foil.b_knots[j + degree] - foil.b_knots[j];
            return width > 0.0 ? basis(j, degree - 1, t, derivative - 1) / width : 0.0;
        };
        return degree * (share(i) - share(i + 1));
    }

    SplineFoil foil;
};

// The knot spans in which the curve moves, divided for the quadrature.
template<typename Function>
double integral(const SplineFoil& spline, const Function& f) {
    constexpr int cuts = 16;
    double sum = 0.0;
    for (int span = 1; span <= spline.num_pnt; ++span) {
        const double from = spline.b_knots[span];
        const double step = (spline.b_knots[span + 1] - from) / cuts;
        for (int i = 0; i < cuts && step > 0.0; ++i)
            sum += gauss_legendre(f, from + i * step, from + (i + 1) * step);
    }
    return sum;
}

} // namespace

class tst_spline_integrals : public QObject {
    Q_OBJECT

private slots:
    void integrals_data();
    void integrals();
};

void tst_spline_integrals::integrals_data() {
    QTest::addColumn<int>("points");
    QTest::addColumn<QList<double>>("moved_knots"); // pairs of an index and a knot

    QTest::newRow("uniform") << 8 << QList<double>{};
    QTest::newRow("two-points") << 2 << QList<double>{};
    QTest::newRow("three-points") << 3 << QList<double>{};
    QTest::newRow("sharpened") << 8 << QList<double>{5, 0.4001};
    QTest::newRow("double-knot") << 8 << QList<double>{5, 0.4};
    QTest::newRow("uneven") << 8 << QList<double>{3, 0.22, 6, 0.68};
    QTest::newRow("clamped") << 8 << QList<double>{0, 0, 1, 0, 2, 0, 8, 1, 9, 1, 10, 1};
}

void tst_spline_integrals::integrals() {
    QFETCH(int, points);
    QFETCH(QList<double>, moved_knots);
    SplineFoil spline = spline_of(hull.mid(0, points));
    for (qsizetype i = 0; i < moved_knots.size(); i += 2)
        spline.b_knots[int(moved_knots[i])] = moved_knots[i + 1];
    const Curve curve = spline_curve(spline).curve;
    BasisCurve basis(spline);

    COMPARE_NEAR(curve.length(),
                 integral(spline, [&](double t) { return norm(basis.at(t).first); }), 1e-11);
    const auto area = [&](double t) {
        const auto values = basis.at(t);
        return 0.5 * cross(values.point - hull[0], values.first);
    };
    COMPARE_NEAR(curve.signed_area(), integral(spline, area), 1e-12);

    for (int span = 1; span <= points; ++span) {
        for (const double share : {0.1, 0.4, 0.75}) {
            const double t =
                spline.b_knots[span] + share * (spline.b_knots[span + 1] - spline.b_knots[span]);
            if (!(spline.b_knots[span] < spline.b_knots[span + 1]))
                continue;
            const auto values = basis.at(t);
            const double speed = norm(values.first);
            const double curvature = cross(values.first, values.second) / (speed * speed * speed);
            const Foot foot = curve.nearest(values.point);
            COMPARE_NEAR(foot.distance, 0.0, 1e-13);
            // Relative to the sharp bend of a sharpened point.
            const double scale = std::max(1.0, std::abs(curvature));
            COMPARE_NEAR(curve.curvature(foot.place) / scale, curvature / scale, 1e-10);
        }
    }
}

AEROLITH_GUILESS_TEST_MAIN(tst_spline_integrals)
#include "tst_spline_integrals.moc"
