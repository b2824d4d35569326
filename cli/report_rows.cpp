// SPDX-FileCopyrightText: Aerolith developers
#include "cli/report_rows.h"

#include "cli/report_pictures.h"
#include "document/frames.h"
#include "document/splinebytes.h"
#include "fitting/outline.h"
#include "sections/section.h"

#include <cmath>

namespace cli {

using drawings::Cell;
using drawings::LineKind;
using drawings::Tag;
using drawings::Tone;

namespace {

// Without a tolerance, the dashed lines in a picture of distances are this far off the axis, in
// fractions of the chord.
constexpr double usual_line = 0.002;

QString short_text(double number) {
    return QString::fromLatin1(QByteArray::number(number, 'e', 2));
}

Cell number(double value, const QString& text) {
    return {text, value};
}

Cell count(int value) {
    return {QString::number(value), double(value)};
}

ReportState within() {
    return {{QStringLiteral("within"), Tone::good, 0}, QStringLiteral("within tolerance")};
}

ReportState beyond() {
    return {{QStringLiteral("beyond"), Tone::odd, 1}, QStringLiteral("beyond tolerance")};
}

ReportState state_of(const QString& text, Tone tone) {
    return {{text, tone, 2}, text};
}

Tag verdict_tag(sections::Verdict verdict) {
    constexpr Tone tones[] = {Tone::good, Tone::odd, Tone::open, Tone::bad};
    const int rank = int(verdict);
    return {sections::verdict_name(verdict), tones[rank], rank};
}

// The points that the window draws.
QPolygonF drawn_spline(const QByteArray& bytes) {
    ParaStruct file;
    read_spline_bytes(bytes, file);
    const std::optional<SplineFoil> spline = in_chord_units(file.spline);
    if (!spline)
        return {};
    const sections::SectionResult result = sections::section_of_spline(*spline);
    return result.section ? result.section->points : QPolygonF();
}

drawings::PictureColumn distances(const QString& points, const QString& allowed) {
    return {QStringLiteral("Distance along the chord"),
            QStringLiteral("Distance of ") + points +
                QStringLiteral(" along the chord. The nose is on the left; up is outside. The "
                               "dashed lines are ") +
                allowed + u'.',
            {{LineKind::upper, QStringLiteral("upper side")},
             {LineKind::lower, QStringLiteral("lower side")}}};
}

} // namespace

ReportStyle check_style() {
    ReportStyle style;
    style.settings.title = QStringLiteral("Section files checked");
    style.settings.lead = QStringLiteral(
        "ok: the window shows what the file means. convert: it does so only after conversion. "
        "ask: two layouts fit. bad: no section.");
    style.settings.state_head = QStringLiteral("Verdict");
    style.settings.columns = {{QStringLiteral("Layout"), false},
                              {QStringLiteral("Kind"), false},
                              {QStringLiteral("Points"), true},
                              {QStringLiteral("Openings"), true}};
    style.settings.picture_columns = {
        {QStringLiteral("Section"),
         QStringLiteral("The outline, scaled to the width of the picture."),
         {}}};
    for (const sections::Verdict verdict : {sections::Verdict::ok, sections::Verdict::convert,
                                            sections::Verdict::ask, sections::Verdict::bad})
        style.states.push_back({verdict_tag(verdict), sections::verdict_name(verdict)});
    style.failure = style.states.back().tag;
    return style;
}

ReportRow check_row(const SectionFile& file, const QByteArray& bytes) {
    ReportRow row;
    row.state = verdict_tag(file.judgement.verdict);
    row.reason = file.judgement.reason;
    row.cells = {Cell{file.layout, {}}, Cell{file.kind, {}}, Cell(), Cell()};
    if (file.points > 0)
        row.cells[2] = count(file.points);
    if (file.openings)
        row.cells[3] = number(file.openings->start,
                              QString::fromStdString(fixed(file.openings->start, 2) + " to " +
                                                     fixed(file.openings->end, 2) + " %"));
    const bool is_spline = sections::is_spline_file(bytes);
    if (file.judgement.verdict != sections::Verdict::bad || !is_spline)
        row.pictures = {outline_picture(is_spline ? drawn_spline(bytes) : file.outline)};
    return row;
}

ReportStyle fit_style(double tolerance) {
    ReportStyle style;
    const QString allowed = short_text(tolerance) +
                            QStringLiteral(" over the first 20 % of the chord and ") +
                            short_text(2.0 * tolerance) + QStringLiteral(" behind");
    style.settings.title = QStringLiteral("Splines fitted to tables");
    style.settings.lead =
        QStringLiteral(
            "Distances of the points of the table from the spline, in fractions of the chord, as "
            "the window shows both. The tolerance is ") +
        allowed + u'.';
    style.settings.state_head = QStringLiteral("Tolerance");
    style.settings.columns = {
        {QStringLiteral("Control points"), true}, {QStringLiteral("Largest"), true},
        {QStringLiteral("at x"), true},           {QStringLiteral("RMS"), true},
        {QStringLiteral("Upper side"), true},     {QStringLiteral("Lower side"), true},
        {QStringLiteral("Outside"), true}};
    style.settings.picture_columns = {{QStringLiteral("Section"),
                                       QStringLiteral("Both in the frame of the window."),
                                       {{LineKind::template_line, QStringLiteral("table")},
                                        {LineKind::spline_line, QStringLiteral("spline")}}},
                                      distances(QStringLiteral("the points of the table"),
                                                QStringLiteral("the tolerance: ") + allowed)};
    style.states = {within(), beyond(), state_of(QStringLiteral("no spline"), Tone::bad)};
    style.failure = style.states.back().tag;
    style.main_column = 1;
    style.main_text = short_text;
    return style;
}

ReportRow fit_row(const fitting::Fit& fit, const QPolygonF& table, double tolerance) {
    const fitting::Deviation& d = fit.deviation;
    ReportRow row;
    row.state = (fit.holds ? within() : beyond()).tag;
    row.cells = {count(fit.spline.num_pnt),
                 number(d.largest, short_text(d.largest)),
                 number(d.largest_at.x(), QString::fromStdString(fixed(d.largest_at.x(), 3))),
                 number(d.root_mean_square, short_text(d.root_mean_square)),
                 number(d.largest_upper, short_text(d.largest_upper)),
                 number(d.largest_lower, short_text(d.largest_lower)),
                 number(d.outside, QString::number(d.outside) + QStringLiteral(" of ") +
                                       QString::number(d.points))};
    const std::optional<SplineFoil> settled = in_chord_units(fit.spline);
    const sections::CurveResult found =
        settled ? sections::spline_curve(*settled) : sections::CurveResult();
    if (found.curve.is_empty())
        return row;
    const QPolygonF points = fitting::in_window_frame(table);
    constexpr double flatness = 5e-5;
    row.pictures = {pair_picture(points, found.curve.polyline(flatness)),
                    distance_picture(points, found.curve,
                                     QPolygonF({QPointF(0.0, tolerance),
                                                QPointF(fitting::nose_share, 2.0 * tolerance),
                                                QPointF(1.0, 2.0 * tolerance)}))};
    return row;
}

ReportStyle compare_style(const Lengths& lengths, double tolerance) {
    ReportStyle style;
    const QString unit = QStringLiteral(" (") + QString::fromLatin1(lengths.unit()) + u')';
    const double line = tolerance > 0.0 ? tolerance : lengths.length(usual_line);
    const QString line_text = QString::number(line) + u' ' + QString::fromLatin1(lengths.unit());
    style.settings.title = QStringLiteral("Sections compared with a reference");
    style.settings.lead =
        QStringLiteral(
            "Greatest distances in both directions, positive where a section lies outside "
            "the reference.") +
        (tolerance > 0.0 ? QStringLiteral(" The tolerance is ") + line_text + u'.' : QString());
    style.settings.state_head = QStringLiteral("Result");
    style.settings.columns = {{QStringLiteral("Farthest") + unit, true},
                              {QStringLiteral("Upper side") + unit, true},
                              {QStringLiteral("at"), true},
                              {QStringLiteral("Lower side") + unit, true},
                              {QStringLiteral("at"), true},
                              {QStringLiteral("RMS upper") + unit, true},
                              {QStringLiteral("RMS lower") + unit, true},
                              {QStringLiteral("Surface longer by") + unit, true}};
    style.settings.picture_columns = {
        {QStringLiteral("Section"),
         QStringLiteral("Both in the frame of the window."),
         {{LineKind::template_line, QStringLiteral("reference")},
          {LineKind::spline_line, QStringLiteral("the section of the row")}}},
        distances(QStringLiteral("the section from the reference"),
                  line_text + (tolerance > 0.0 ? QStringLiteral(", the tolerance")
                                               : QStringLiteral(" off")))};
    if (tolerance > 0.0)
        style.states = {within(), beyond()};
    else
        style.states = {state_of(QStringLiteral("compared"), Tone::plain)};
    style.states.push_back(state_of(QStringLiteral("not compared"), Tone::bad));
    style.failure = style.states.back().tag;
    style.main_column = 0;
    style.main_text = [lengths](double length) {
        return QString::fromStdString(lengths.text(length / lengths.length(1.0)) + " " +
                                      lengths.unit());
    };
    return style;
}

ReportRow compare_row(const sections::Comparison& comparison, const sections::Section& reference,
                      const sections::Section& other, const Lengths& lengths, double tolerance) {
    const auto side = [](const sections::Deviation& to, const sections::Deviation& from) {
        return std::abs(to.greatest) >= std::abs(from.greatest) ? to : from;
    };
    const auto length = [&lengths](double fraction, bool with_sign) {
        return number(lengths.length(fraction),
                      QString::fromStdString(with_sign ? lengths.signed_text(fraction)
                                                       : lengths.text(fraction)));
    };
    const auto station = [](double x) { return number(x, QString::fromStdString(percent(x, 1))); };
    const sections::OneWay& to = comparison.to_reference;
    const sections::Deviation upper = side(to.upper.whole, comparison.from_reference.upper.whole);
    const sections::Deviation lower = side(to.lower.whole, comparison.from_reference.lower.whole);
    ReportRow row;
    const bool is_within = lengths.length(comparison.greatest()) <= tolerance;
    row.state = (tolerance <= 0.0 ? state_of(QStringLiteral("compared"), Tone::plain)
                 : is_within      ? within()
                                  : beyond())
                    .tag;
    row.cells = {length(comparison.greatest(), false),
                 length(upper.greatest, true),
                 station(upper.station),
                 length(lower.greatest, true),
                 station(lower.station),
                 length(to.upper.whole.root_mean_square(), false),
                 length(to.lower.whole.root_mean_square(), false),
                 length(comparison.length, true)};

    // In the position in which they were compared: aligned sections have the same nose.
    constexpr double degree = 3.14159265358979323846 / 180.0;
    const double angle = comparison.angle * degree;
    const QPointF turn(comparison.scale * std::cos(angle), comparison.scale * std::sin(angle));
    const auto turned = [turn](QPointF p) {
        return QPointF(turn.x() * p.x() - turn.y() * p.y(), turn.y() * p.x() + turn.x() * p.y());
    };
    const auto nose = [](const sections::Curve& curve) {
        return curve.position(sections::leading_edge_of(curve));
    };
    const bool is_moved = comparison.scale != 1.0 || comparison.angle != 0.0;
    const QPointF shift = is_moved ? nose(reference.curve) - turned(nose(other.curve)) : QPointF();
    QPolygonF points;
    for (const QPointF& point : other.points)
        points << turned(point) + shift;
    const double line = tolerance > 0.0 ? tolerance / lengths.length(1.0) : usual_line;
    row.pictures = {pair_picture(reference.points, points),
                    distance_picture(points, reference.curve,
                                     QPolygonF({QPointF(0.0, line), QPointF(1.0, line)}))};
    return row;
}

} // namespace cli
