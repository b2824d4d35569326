// SPDX-FileCopyrightText: Aerolith developers
#include "tables/write.h"

#include "tables/arrange.h"
#include "tables/write_p.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QRegularExpression>

#include <algorithm>
#include <charconv>
#include <cmath>

namespace tables {

namespace {

constexpr QLatin1String untitled("section");

void append_fixed(QByteArray& text, double value, int decimals) {
    // 309 digits before the point, the point, the sign.
    char digits[340];
    const std::to_chars_result result = std::to_chars(std::begin(digits), std::end(digits), value,
                                                      std::chars_format::fixed, decimals);
    const auto is_zero = [](char c) { return c == '-' || c == '0' || c == '.'; };
    const char* begin = digits;
    if (*begin == '-' && std::all_of(begin, static_cast<const char*>(result.ptr), is_zero))
        ++begin;
    text.append(begin, result.ptr - begin);
}

// The shortest text that reads back as the same number.
QByteArray exact_text(double value) {
    char digits[32];
    const std::to_chars_result result =
        std::to_chars(std::begin(digits), std::end(digits), value + 0.0);
    return QByteArray(digits, result.ptr - digits);
}

Written write_window(const Table& table, int decimals) {
    QPolygonF points = table.points;
    const Extent extent(points);
    if (!(extent.width() > 0.0))
        return {{}, {refusal(QStringLiteral("all points have the same x"))}};
    Written written;
    if (points.last().x() > points.first().x()) {
        std::reverse(points.begin(), points.end());
        written.findings.append({Gravity::note, 0,
                                 QStringLiteral("written from its last point on, which lies "
                                                "farther behind than the first")});
    }
    const QPointF first = points.first();
    if (extent.greatest - first.x() > half_unit(decimals) * extent.width()) {
        const auto row =
            std::max_element(table.points.begin(), table.points.end(),
                             [](const QPointF& a, const QPointF& b) { return a.x() < b.x(); });
        const auto index = std::size_t(row - table.points.begin());
        return {{},
                {{Gravity::error, index < table.lines.size() ? table.lines[index] : 0,
                  QStringLiteral("x = %1 lies behind both ends (x = %2 and %3); the window would "
                                 "cut it off")
                      .arg(QString::number(row->x(), 'g', 8),
                           QString::number(table.points.first().x(), 'g', 8),
                           QString::number(table.points.last().x(), 'g', 8))}}};
    }

    QString title = plain_title(table.title, untitled);
    // Without a letter the window takes a title for a row, and other programs do if it begins with
    // two numbers.
    static const QRegularExpression two_numbers(
        QStringLiteral("^[^\\p{L}\\d]*\\d[\\d.]*[^\\p{L}\\d.][^\\p{L}\\d]*\\d"));
    if (title.contains(two_numbers) ||
        std::none_of(title.begin(), title.end(), [](QChar c) { return c.isLetter(); }))
        title = QString(untitled) + QLatin1Char(' ') + title;
    written.bytes = title.toUtf8() + '\n';
    const double width = first.x() - extent.least;
    for (const QPointF& point : std::as_const(points)) {
        const double x = (point.x() - extent.least) / width;
        const double y = (point.y() - first.y()) / width;
        append_row(written.bytes, QPointF(std::min(x, 1.0), y), decimals);
    }
    return written;
}

Written write_selig(const Table& table, int decimals) {
    Written written;
    written.bytes = safe_title_line(table.title);
    for (const QPointF& point : table.points)
        append_row(written.bytes, point, decimals);
    return written;
}

Written write_lednicer(const Table& table, int decimals) {
    const QPolygonF points = with_upper_first(table.points);
    const qsizetype nose = nose_row(points);
    // Two rows with the same x are the ends of a blunt nose.
    const bool is_blunt = nose + 1 < points.size() && points[nose + 1].x() == points[nose].x();
    const qsizetype lower = is_blunt ? nose + 1 : nose;
    Written written;
    written.findings = notes_on_sides(points);
    written.bytes = safe_title_line(table.title);
    append_row(written.bytes, QPointF(double(nose + 1), double(points.size() - lower)), 1);
    written.bytes += '\n';
    for (qsizetype i = nose; i >= 0; --i)
        append_row(written.bytes, points[i], decimals);
    written.bytes += '\n';
    for (qsizetype i = lower; i < points.size(); ++i)
        append_row(written.bytes, points[i], decimals);
    return written;
}

Written write_csv(const Table& table, int decimals) {
    Written written;
    const QString title = plain_title(table.title, QLatin1String());
    if (!title.isEmpty())
        written.bytes += "# " + title.toUtf8() + '\n';
    if (table.openings) {
        written.bytes += "# openings: " + exact_text(table.openings->start) + ' ' +
                         exact_text(table.openings->end) + '\n';
    }
    written.bytes += "x,y\n";
    for (const QPointF& point : table.points) {
        append_fixed(written.bytes, point.x(), decimals);
        written.bytes += ',';
        append_fixed(written.bytes, point.y(), decimals);
        written.bytes += '\n';
    }
    return written;
}

QByteArray json_string(const QString& text) {
    const QByteArray list = QJsonDocument(QJsonArray{text}).toJson(QJsonDocument::Compact);
    return list.sliced(1, list.size() - 2);
}

Written write_json(const Table& table, int decimals) {
    Written written;
    QByteArray& bytes = written.bytes;
    bytes = "{\"title\": " + json_string(table.title) +
            ",\n \"layout\": " + json_string(table.layout) + ",\n \"openings\": ";
    if (table.openings) {
        bytes += "{\"start\": " + exact_text(table.openings->start) +
                 ", \"end\": " + exact_text(table.openings->end) + '}';
    } else {
        bytes += "null";
    }
    bytes += ",\n \"points\": [";
    const char* separator = "";
    for (const QPointF& point : table.points) {
        bytes += separator;
        bytes += "\n  [";
        append_fixed(bytes, point.x(), decimals);
        bytes += ", ";
        append_fixed(bytes, point.y(), decimals);
        bytes += ']';
        separator = ",";
    }
    bytes += "\n ]}\n";
    return written;
}

Written write_arranged(const Table& table, Format format, int decimals) {
    switch (format) {
    case Format::window:
        return write_window(table, decimals);
    case Format::selig:
        return write_selig(table, decimals);
    case Format::lednicer:
        return write_lednicer(table, decimals);
    case Format::lep:
        return write_lep(table, decimals);
    case Format::columns:
        return write_columns(table, decimals);
    case Format::csv:
        return write_csv(table, decimals);
    case Format::json:
        return write_json(table, decimals);
    }
    return {};
}

} // namespace

double half_unit(int decimals) {
    return 0.5 * std::pow(10.0, -decimals);
}

void append_aligned(QByteArray& text, double value, int decimals) {
    QByteArray number;
    append_fixed(number, value, decimals);
    constexpr int sign_digit_point = 3;
    text += number.rightJustified(sign_digit_point + decimals);
}

void append_row(QByteArray& text, QPointF point, int decimals) {
    append_aligned(text, point.x(), decimals);
    text += ' ';
    append_aligned(text, point.y(), decimals);
    text += '\n';
}

QString plain_title(const QString& title, QLatin1String otherwise) {
    QString plain = title;
    for (QChar& c : plain) {
        if (!c.isPrint())
            c = QLatin1Char(' ');
    }
    plain = plain.simplified();
    return plain.isEmpty() ? QString(otherwise) : plain;
}

QByteArray safe_title_line(const QString& title) {
    QString safe = plain_title(title, untitled);
    // When it reads a pair of numbers, Fortran accepts T and F as logical values, commas and
    // slashes as omitted numbers, and the words for not-a-number and infinity.
    const bool is_risky = QStringLiteral("TtFf0123456789+-.,;/*").contains(safe.front()) ||
                          safe.startsWith(QLatin1String("nan"), Qt::CaseInsensitive) ||
                          safe.startsWith(QLatin1String("inf"), Qt::CaseInsensitive);
    if (is_risky)
        safe.prepend(QLatin1Char('_'));
    return safe.toUtf8() + '\n';
}

QList<Finding> notes_on_sides(const QPolygonF& outline) {
    if (!has_equal_sides(outline))
        return {};
    return {{Gravity::note, 0,
             QStringLiteral("both sides have the same height; the first one counts as upper")}};
}

Finding refusal(const QString& text) {
    return {Gravity::error, 0, text};
}

QStringList format_names() {
    return {QStringLiteral("window"), QStringLiteral("selig"),   QStringLiteral("lednicer"),
            QStringLiteral("lep"),    QStringLiteral("columns"), QStringLiteral("csv"),
            QStringLiteral("json")};
}

std::optional<Format> format_from_name(const QString& name) {
    const qsizetype index = format_names().indexOf(name);
    if (index < 0)
        return std::nullopt;
    return Format(index);
}

bool has_error(const QList<Finding>& findings) {
    return std::any_of(findings.begin(), findings.end(),
                       [](const Finding& finding) { return finding.gravity == Gravity::error; });
}

bool Written::ok() const {
    return !has_error(findings);
}

Table arranged(Table table, const WriteOptions& options) {
    if (options.openings)
        table.openings = options.openings;
    if (options.close_gap)
        table = with_closed_gap(std::move(table));
    if (options.normalize)
        table = normalized(std::move(table));
    if (options.reverse)
        table = reversed(std::move(table));
    return table;
}

Written write(const Table& table, Format format, const WriteOptions& options) {
    constexpr qsizetype least_points = 6;
    constexpr int most_decimals = 15;
    if (options.decimals < 1 || options.decimals > most_decimals) {
        return {{},
                {refusal(QStringLiteral("%1 decimals; expected 1 to %2")
                             .arg(options.decimals)
                             .arg(most_decimals))}};
    }
    if (table.points.size() < least_points) {
        return {{},
                {refusal(QStringLiteral("%1 points; expected at least %2")
                             .arg(table.points.size())
                             .arg(least_points))}};
    }
    if (std::any_of(table.points.begin(), table.points.end(), [](const QPointF& point) {
            return !std::isfinite(point.x()) || !std::isfinite(point.y());
        }))
        return {{}, {refusal(QStringLiteral("a point is not finite"))}};

    Table ready = table;
    ready.findings.clear();
    ready = arranged(std::move(ready), options);
    Written written = write_arranged(ready, format, options.decimals);
    written.findings = ready.findings + written.findings;
    if (!written.ok())
        written.bytes.clear();
    return written;
}

} // namespace tables
