// SPDX-FileCopyrightText: Aerolith developers
// Known sections in every layout with random oddities: read to the same points or refused with a
// reason, never silently wrong. AEROLITH_GENERATED_TABLES sets their number, AEROLITH_TABLES_KEEP a
// folder for those that fail.
#include "generatedtables.h"
#include "support/testmain.h"
#include "tables/table.h"

#include <QDir>
#include <QFile>
#include <QMap>
#include <QTest>

#include <cmath>

using namespace tables;

namespace {

bool same_points(const QPolygonF& a, const QPolygonF& b, bool scaled) {
    constexpr double rounding = 1e-12;
    if (a.size() != b.size())
        return false;
    const double scale = scaled ? b.boundingRect().width() / a.boundingRect().width() : 1.0;
    for (int i = 0; i < a.size(); ++i) {
        if (std::abs(scale * a[i].x() - b[i].x()) > rounding ||
            std::abs(scale * a[i].y() - b[i].y()) > rounding)
            return false;
    }
    return true;
}

QString errors(const Table& table) {
    for (const Finding& finding : table.findings) {
        if (finding.gravity == Gravity::error)
            return QStringLiteral("line %1: %2").arg(finding.line).arg(finding.text);
    }
    return QString();
}

struct Counts {
    int read = 0;
    int refused = 0;
    int damaged = 0;
};

} // namespace

class tst_generated : public QObject {
    Q_OBJECT
private slots:
    void none_is_silently_wrong();
};

void tst_generated::none_is_silently_wrong() {
    bool set = false;
    const int wanted = qEnvironmentVariableIntValue("AEROLITH_GENERATED_TABLES", &set);
    const int files = set ? wanted : 2000;
    const QString keep = qEnvironmentVariable("AEROLITH_TABLES_KEEP");
    QMap<QByteArray, Counts> counts;
    int wrong = 0;
    int refused = 0;
    for (int seed = 1; seed <= files; ++seed) {
        const GeneratedTable given = generated_outline_table(quint32(seed));
        const Table table = read(given.bytes);
        Counts& layout = counts[given.layout];
        QString complaint;
        if (given.damaged) {
            ++layout.damaged;
            if (table.readable())
                complaint = QStringLiteral("read in spite of damage");
        } else if (!table.readable()) {
            ++layout.refused;
            ++refused;
            complaint = QStringLiteral("refused");
        } else {
            ++layout.read;
            if (!same_points(table.points, given.points, given.in_millimetres) ||
                table.lines.size() != std::size_t(table.points.size()))
                complaint = QStringLiteral("other points, as ") + table.layout;
        }
        if (!table.readable() && errors(table).isEmpty())
            complaint += QStringLiteral(" without a reason");
        if (complaint.isEmpty())
            continue;
        wrong += complaint == QLatin1String("refused") ? 0 : 1;
        qInfo().noquote() << "seed" << seed << given.layout << given.oddities << complaint
                          << errors(table);
        if (!keep.isEmpty()) {
            QFile file(QDir(keep).filePath(QStringLiteral("%1.dat").arg(seed)));
            QVERIFY(file.open(QIODevice::WriteOnly));
            file.write(given.bytes);
        }
    }
    for (auto it = counts.cbegin(); it != counts.cend(); ++it)
        qInfo().noquote() << it.key() << "read" << it->read << "refused" << it->refused
                          << "damaged and refused" << it->damaged;
    QCOMPARE(wrong, 0);
    QVERIFY2(refused <= files / 200, "sound tables are refused");
}

AEROLITH_GUILESS_TEST_MAIN(tst_generated)
#include "tst_generated.moc"
