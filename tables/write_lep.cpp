// SPDX-FileCopyrightText: Aerolith developers
// Writes the paragliding profile, with the counts of its rows.
#include "tables/profile.h"
#include "tables/write_p.h"

namespace tables {

Written write_lep(const Table& table, int decimals) {
    constexpr qsizetype most_rows = 500;
    const Profile profile = profile_of(table, decimals);
    if (!profile.ok())
        return {{}, profile.findings};
    const QPolygonF& points = profile.table.points;
    const qsizetype count = points.size();
    if (count > most_rows) {
        return {{},
                {refusal(QStringLiteral("%1 rows; a profile has at most %2, expected "
                                        "--lep-points U,I,L")
                             .arg(count)
                             .arg(most_rows))}};
    }

    Written written;
    written.findings = profile.findings;
    QByteArray& bytes = written.bytes;
    bytes = plain_title(table.title, QLatin1String("section"))
                .replace(QLatin1Char(' '), QLatin1Char('_'))
                .toUtf8() +
            '\n';
    for (const qsizetype rows :
         {count, profile.begin + 1, profile.end - profile.begin + 1, count - profile.end})
        bytes += QByteArray::number(rows) + '\n';
    for (const QPointF& point : points)
        append_row(bytes, point, decimals);
    return written;
}

} // namespace tables
