// SPDX-FileCopyrightText: Aerolith developers
// Spline files: what they hold against what the window can draw.
#include "sections/verdict.h"

#include "document/frames.h"
#include "document/parastruct.h"
#include "document/splinebytes.h"
#include "sections/curve.h"

#include <QtEndian>

#include <algorithm>
#include <cmath>

namespace sections {

namespace {

using tables::Gravity;

constexpr qsizetype bytes_without_name = 3404;
constexpr quint32 no_name = 0xffffffff;

// The number of bytes of the name, which is the first item of the file.
quint32 name_bytes(const QByteArray& bytes) {
    if (bytes.size() < qsizetype(sizeof(quint32)))
        return no_name;
    return qFromBigEndian<quint32>(bytes.constData());
}

bool is_finite(QPointF point) {
    return std::isfinite(point.x()) && std::isfinite(point.y());
}

class SplineCheck {
public:
    explicit SplineCheck(const QByteArray& file) : bytes(file) { read_spline_bytes(bytes, record); }

    Judgement judge() {
        check_length();
        if (check_curve())
            check_sharpened_points();
        check_carried_values();
        check_openings();
        if (judgement.reason.isEmpty())
            judgement.verdict = Verdict::ok;
        return judgement;
    }

private:
    void add(Gravity gravity, const QString& text) {
        judgement.findings.append({gravity, 0, text});
        if (gravity == Gravity::error && judgement.reason.isEmpty())
            judgement.reason = text;
    }

    void check_length() {
        const quint32 name = name_bytes(bytes);
        const qsizetype expected = bytes_without_name + (name == no_name ? 0 : qsizetype(name));
        if (bytes.size() < expected)
            add(Gravity::error,
                QStringLiteral("%1 bytes, expected %2").arg(bytes.size()).arg(expected));
        else if (bytes.size() > expected)
            add(Gravity::doubt,
                QStringLiteral("%1 bytes after the last item").arg(bytes.size() - expected));
    }

    bool check_curve() {
        if (spline.num_pnt < 0 || spline.num_pnt > MAXNUMPOINTS) {
            add(Gravity::error, QStringLiteral("%1 control points, expected at most %2")
                                    .arg(spline.num_pnt)
                                    .arg(MAXNUMPOINTS));
            return false;
        }
        const QString reason = spline_curve(spline).reason;
        if (!reason.isEmpty()) {
            add(Gravity::error, reason);
            return false;
        }
        if (!in_chord_units(spline)) {
            add(Gravity::error, QStringLiteral("the curve has no width"));
            return false;
        }
        const int order = spline.degree + 1;
        if (spline.order != order || spline.num_knt != spline.num_pnt + order) {
            add(Gravity::doubt, QStringLiteral("order %1 and %2 knots, expected %3 and %4")
                                    .arg(spline.order)
                                    .arg(spline.num_knt)
                                    .arg(order)
                                    .arg(spline.num_pnt + order));
        }
        return true;
    }

    void check_sharpened_points() {
        // "Set hull" leaves 0.0001 between two knots.
        constexpr double sharp_span = 0.0002;
        for (int j = 2; j < spline.point_count(); ++j) {
            const double span = spline.b_knots[j + 1] - spline.b_knots[j];
            if (span > 0.0 && span <= sharp_span)
                add(Gravity::note, QStringLiteral("control point %1 is sharpened").arg(j));
        }
    }

    void check_carried_values() {
        if (!std::all_of(spline.rd_CP, spline.rd_CP + spline.point_count(), is_finite) ||
            !std::isfinite(spline.L_T_S))
            add(Gravity::note, QStringLiteral("a carried value that is not finite"));
    }

    void check_openings() {
        const double start = spline.startVent;
        const double end = spline.endVent;
        const bool is_finite = std::isfinite(start) && std::isfinite(end);
        if (!is_finite || start < 0.0 || end < start || end > 100.0) {
            add(is_finite ? Gravity::doubt : Gravity::error,
                QStringLiteral("openings %1 %2, expected O-1 not below 0, O-2 not below O-1 and "
                               "not above 100")
                    .arg(start)
                    .arg(end));
        }
    }

    const QByteArray& bytes;
    ParaStruct record;
    const SplineFoil& spline = record.spline;
    Judgement judgement;
};

} // namespace

bool is_spline_file(const QByteArray& bytes) {
    // A text does not begin like this: its first two bytes are characters or a byte-order mark.
    constexpr quint32 longest_name = 0xffff;
    const quint32 name = name_bytes(bytes);
    return bytes.size() >= qsizetype(sizeof name) &&
           (name == no_name || (name <= longest_name && name % sizeof(QChar) == 0));
}

Judgement judge_spline(const QByteArray& bytes) {
    return SplineCheck(bytes).judge();
}

} // namespace sections
