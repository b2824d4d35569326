// SPDX-FileCopyrightText: Aerolith developers
// bench_fit FOLDER: fits all sections in a folder, and tables made from splines. Compares the
// results with the goals, and with simple baselines from the same run. Deviations are those of the
// written files, settled as in the window. Times are processor times of this process.
#include "fitting/fit.h"
#include "fitting/outline.h"
#include "fittingtables.h"
#include "harness.h"
#include "tables/table.h"

#include "document/frames.h"

#include <Eigen/Cholesky>
#include <Eigen/QR>
#include <QDirIterator>
#include <QFile>

#include <algorithm>
#include <cmath>
#include <cstdio>

namespace {

using fitting::Deviation;
using fitting::Point;
using fitting::Points;

struct Section {
    QString name;
    QPolygonF points;
};

// The results for all sections.
struct Figures {
    std::vector<double> largest;
    std::vector<double> seconds;
    std::vector<double> points;
    int within = 0;

    void add(const Deviation& deviation, double time, int count) {
        largest.push_back(deviation.largest);
        seconds.push_back(time);
        points.push_back(count);
        within += deviation.largest_over_tolerance <= fitting::usual_tolerance;
    }
};

double quantile(std::vector<double> values, double share) {
    if (values.empty())
        return std::nan("");
    std::sort(values.begin(), values.end());
    return values[std::min(values.size() - 1, std::size_t(share * double(values.size())))];
}

void print_figures(const char* what, const Figures& figures) {
    std::printf("%-34s %8.1e %8.1e %8.1e %8.1f %6.0f %9.1f\n", what, quantile(figures.largest, 0.5),
                quantile(figures.largest, 0.9), quantile(figures.largest, 1.0),
                100.0 * figures.within / double(figures.largest.size()),
                quantile(figures.points, 0.5), 1e3 * quantile(figures.seconds, 0.5));
}

std::vector<Section> sections_below(const QString& folder) {
    std::vector<Section> sections;
    QStringList names;
    QDirIterator files(folder, QDir::Files, QDirIterator::Subdirectories);
    while (files.hasNext())
        names << files.next();
    names.sort();
    for (const QString& name : names) {
        QFile file(name);
        if (!file.open(QIODevice::ReadOnly))
            continue;
        const tables::Table table = tables::read(file.readAll());
        if (table.readable() && table.kind == tables::Kind::section &&
            fitting::prepare(table.points).reason.isEmpty())
            sections.push_back({name, table.points});
    }
    return sections;
}

// Index of the point with the least x.
int nose_of(const QPolygonF& points) {
    const auto ahead = [](QPointF a, QPointF b) { return a.x() < b.x(); };
    return int(std::min_element(points.begin(), points.end(), ahead) - points.begin());
}

SplineFoil file_of(const Points& control) {
    SplineFoil spline;
    spline.num_pnt = int(control.size());
    spline.init_knots();
    for (int i = 0; i < spline.num_pnt; ++i)
        spline.CP[i] = QPointF(control[i].x(), control[i].y());
    return in_pixels(spline, ChordMapping::of_size(QSize(1024, 768)));
}

// Least squares at fixed chord-length parameters.
Points by_chord_length(const QPolygonF& table, int count) {
    std::vector<double> arc = {0.0};
    for (int i = 1; i < table.size(); ++i)
        arc.push_back(arc.back() +
                      std::hypot(table[i].x() - table[i - 1].x(), table[i].y() - table[i - 1].y()));
    Eigen::MatrixXd basis = Eigen::MatrixXd::Zero(table.size(), count);
    Eigen::MatrixXd right(table.size(), 2);
    for (int i = 0; i < table.size(); ++i) {
        const double x = arc[i] / arc.back() * count;
        const int piece = std::min(int(x), count - 1);
        const fitting::Weights w = fitting::weights(count, {piece, x - piece});
        for (int k = 0; k < 3; ++k)
            basis(i, w.first + k) += w.of[k];
        right(i, 0) = table[i].x();
        right(i, 1) = table[i].y();
    }
    const Eigen::MatrixXd normal =
        basis.transpose() * basis + 1e-9 * Eigen::MatrixXd::Identity(count, count);
    const Eigen::MatrixXd solution = normal.ldlt().solve(basis.transpose() * right);
    Points control;
    for (int i = 0; i < count; ++i)
        control.emplace_back(solution.row(i).transpose());
    return control;
}

// Class and shape functions. Each side is sqrt(x) (1 - x) times a Bernstein polynomial with 15
// parameters, plus a straight line to its end. The heights are fitted by least squares.
Deviation by_shape_functions(const QPolygonF& table) {
    constexpr int terms = 15;
    constexpr int places = 4000;
    const int nose = nose_of(table);
    const auto shape = [](double x, int k) {
        double value = std::sqrt(x) * (1.0 - x);
        for (int i = 0; i < terms - 1; ++i)
            value *= i < k ? x * double(terms - 1 - i) / double(i + 1) : 1.0 - x;
        return value;
    };
    QPolygonF curve;
    for (const bool second : {false, true}) {
        const int from = second ? nose : 0;
        const int to = second ? int(table.size()) - 1 : nose;
        const double end = second ? table.last().y() : table.first().y();
        const double origin = table[nose].y();
        Eigen::MatrixXd basis(to - from + 1, terms);
        Eigen::VectorXd right(to - from + 1);
        for (int i = from; i <= to; ++i) {
            const double x = std::clamp(table[i].x() - table[nose].x(), 0.0, 1.0);
            for (int k = 0; k < terms; ++k)
                basis(i - from, k) = shape(x, k);
            right[i - from] = table[i].y() - origin - x * (end - origin);
        }
        const Eigen::VectorXd factors = basis.colPivHouseholderQr().solve(right);
        for (int i = 0; i <= places; ++i) {
            const double turn = 0.5 * i / places;
            const double root = second ? std::sin(3.14159265358979323846 * turn)
                                       : std::cos(3.14159265358979323846 * turn);
            const double x = root * root;
            double y = origin + x * (end - origin);
            for (int k = 0; k < terms; ++k)
                y += factors[k] * shape(x, k);
            curve << QPointF(table[nose].x() + x, y);
        }
    }
    Deviation result;
    for (const QPointF& point : table) {
        double least = 1.0;
        for (const QPointF& place : curve)
            least = std::min(least, std::hypot(place.x() - point.x(), place.y() - point.y()));
        const bool at_nose = point.x() - table[nose].x() <= fitting::nose_share;
        result.largest = std::max(result.largest, least);
        result.largest_over_tolerance =
            std::max(result.largest_over_tolerance, at_nose ? least : 0.5 * least);
    }
    return result;
}

Figures fits(const std::vector<Section>& sections, const fitting::Request& request) {
    Figures figures;
    for (const Section& section : sections) {
        fitting::Fit fit;
        const double time = timed([&] { fit = fitting::fit(section.points, request); });
        figures.add(fit.deviation, time, fit.spline.num_pnt);
    }
    return figures;
}

// Fits every second point of dense tables. Prints the largest distance of the points left out, and
// its ratio to the largest distance of the points kept. The ends and the point with the least x are
// kept, because they determine the frame.
void print_left_out(const char* what, const std::vector<Section>& sections,
                    const fitting::Request& request) {
    std::vector<double> others;
    std::vector<double> ratios;
    for (const Section& section : sections) {
        if (section.points.size() < 90)
            continue;
        QPolygonF kept;
        QPolygonF left_out;
        const int last = int(section.points.size()) - 1;
        const int nose = nose_of(section.points);
        for (int i = 0; i <= last; ++i)
            (i % 2 == 0 || i == last || i == nose ? kept : left_out) << section.points[i];
        const fitting::Fit fit = fitting::fit(kept, request);
        // In the frame of the kept points.
        const QPolygonF framed = fitting::in_window_frame(kept);
        const double scale = (framed[1].x() - 1.0) / (kept[1].x() - kept[0].x());
        const SplineFoil spline = *in_chord_units(fit.spline);
        Points control;
        for (int i = 0; i < spline.num_pnt; ++i)
            control.emplace_back(spline.CP[i].x(), spline.CP[i].y());
        double largest = 0.0;
        for (const QPointF& point : left_out) {
            const QPointF away = point - section.points[0];
            largest = std::max(largest, fitting::distance_to(control, Point(1.0 + scale * away.x(),
                                                                            scale * away.y())));
        }
        others.push_back(largest);
        ratios.push_back(largest / fit.deviation.largest);
    }
    std::printf("%-34s %8.1e, over that of the points kept %.2f (%d tables)\n", what,
                quantile(others, 0.5), quantile(ratios, 0.5), int(others.size()));
}

// Fits random splines like sections, given by 400 points of their curves.
void print_splines_met() {
    constexpr int splines = 200;
    constexpr double met = 1e-7;
    int back = 0;
    std::vector<double> seconds;
    for (unsigned seed = 0; seed < splines; ++seed) {
        const SplineAndTable truth = random_spline(seed);
        fitting::Request request;
        request.points = truth.spline.num_pnt;
        fitting::Fit fit;
        seconds.push_back(timed([&] { fit = fitting::fit(truth.table, request); }));
        back += fit.deviation.largest < met;
    }
    std::printf("%-34s %5.1f %% below %.0e, %.1f ms at the median (%d splines)\n",
                "tables made from splines", 100.0 * back / splines, met,
                1e3 * quantile(seconds, 0.5), splines);
}

} // namespace

int main(int argc, char* argv[]) {
    if (argc != 2) {
        std::fprintf(stderr, "usage: bench_fit FOLDER\n");
        return 2;
    }
    const std::vector<Section> sections = sections_below(QFile::decodeName(argv[1]));
    if (sections.empty()) {
        std::fprintf(stderr, "no sections below %s\n", argv[1]);
        return 1;
    }
    std::printf("%d sections; largest distances in chords\n%-34s %8s %8s %8s %8s %6s %9s\n",
                int(sections.size()), "", "median", "90 %", "worst", "within %", "points",
                "median ms");
    const auto request = [](int points, bool best) {
        fitting::Request result;
        result.points = points;
        result.best = best;
        return result;
    };
    print_figures("30 points", fits(sections, request(30, false)));
    print_figures("30 points, best", fits(sections, request(30, true)));
    print_figures("20 points", fits(sections, request(20, false)));
    print_figures("12 points", fits(sections, request(12, false)));
    print_figures("as few as hold the tolerance", fits(sections, request(0, false)));
    Figures plain;
    Figures shapes;
    for (const Section& section : sections) {
        const QPolygonF framed = fitting::in_window_frame(section.points);
        SplineFoil spline;
        const double time = timed([&] { spline = file_of(by_chord_length(framed, 30)); });
        if (const auto deviation = fitting::deviation(section.points, spline))
            plain.add(*deviation, time, 30);
        shapes.add(by_shape_functions(framed), 0.0, 30);
    }
    print_figures("by chord length, 30 points", plain);
    print_figures("shape functions, 30 parameters", shapes);
    print_left_out("every second left out, 20 points", sections, request(20, false));
    print_left_out("every second left out, as few", sections, request(0, false));
    print_splines_met();
    return 0;
}
