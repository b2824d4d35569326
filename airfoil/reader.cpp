// SPDX-FileCopyrightText: Aerolith developers
// Reading coordinate tables.
#include "airfoil/airfoil.h"

#include "airfoil/numericrows_p.h"
#include "document/readfile.h"

#include <QIODevice>
#include <QTextStream>

#include <cstddef>
#include <new>
#include <utility>
#include <vector>

namespace {

// The table pane and the picture take some 100 bytes and 3 microseconds for each point: a longer
// outline would exhaust the memory or freeze the window.
constexpr qsizetype most_points = 4'000'000;

// The number of decimal separators in a line, not counting its last character.
int separator_count(const QString& line) {
    int count = 0;
    for (qsizetype i = 0; i < line.size() - 1; ++i) {
        if (line[i] == QLatin1Char('.') || line[i] == QLatin1Char(','))
            ++count;
    }
    return count;
}

// Determines the layout of a table from its first three numeric lines.
class LayoutProbe {
public:
    // Takes the next line of the table; false once no more are needed.
    bool take(const QString& text) {
        const qint64 j = lines++;
        colNum = 0;
        const QString line = clean(text);
        if (!is_numeric(line))
            return true;
        colNum = separator_count(line);
        QString S[3];
        FindNumericSubStrings(line, S);
        const double XXX = field_value(S[0]);
        // A nose this early in the file does not belong to a half contour: the shift makes the test
        // for one fail.
        if (XXX <= 0.0 && j <= 3)
            transX = -1.0;
        xx[k] = double(field_number(Repair_NumString(S[0]))) + transX;
        return ++k <= 2;
    }

    // 1 half contour, 2 one outline, 3 three columns; any other number for an unknown layout.
    int code() const {
        const bool is_half = k == 3 && xx[0] >= 1.0 && xx[1] <= 0.0 && xx[2] > 0.0;
        return colNum == 2 && is_half ? 1 : colNum;
    }

private:
    qint64 lines = 0;
    int colNum = 0;
    double transX = 0.0;
    double xx[3] = {};
    int k = 0;
};

int probe_layout(const QByteArray& text) {
    LayoutProbe probe;
    for_each_line(text, [&](const QString& line) { return probe.take(line); });
    return probe.code();
}

QPolygonF one_outline(const QByteArray& text) {
    QPolygonF outline;
    for_each_numeric_row(
        text, [&](const NumericRow& row) { outline << QPointF(double(row[0]), double(row[1])); });
    return outline;
}

QPolygonF half_contour(const QByteArray& text) {
    std::vector<QPointF> side;
    for_each_numeric_row(
        text, [&](const NumericRow& row) { side.emplace_back(double(row[0]), double(row[1])); });
    QPolygonF outline;
    for (std::size_t i = side.size(); i-- > 1;)
        outline << side[i];
    for (std::size_t i = 2; i < side.size(); ++i)
        outline << QPointF(side[i].x(), -side[i].y());
    return outline;
}

QPolygonF three_columns(const QByteArray& text) {
    std::vector<QPointF> upper;
    std::vector<QPointF> lower;
    for_each_numeric_row(text, [&](const NumericRow& row) {
        upper.emplace_back(double(row[0]), double(row[1]));
        lower.emplace_back(double(row[0]), double(row[2]));
    });
    QPolygonF outline;
    for (std::size_t i = lower.size(); i-- > 0;)
        outline << lower[i];
    for (const QPointF& point : upper)
        outline << point;
    return outline;
}

QPolygonF outline_of_any_layout(const QByteArray& text) {
    switch (probe_layout(text)) {
    case 1:
        return half_contour(text);
    case 2:
        return one_outline(text);
    case 3:
        return three_columns(text);
    default:
        return QPolygonF();
    }
}

// One pass scales by the extent of the whole table, the second by what is left of it.
QPolygonF normalized_outline(const QByteArray& text) {
    QPolygonF outline = outline_of_any_layout(text);
    if (outline.size() > most_points)
        return QPolygonF();
    return Normalize_airfoil2(Normalize_airfoil2(std::move(outline), 1), 1);
}

// The result of @p work on the text of a file; an empty one when there is not enough memory.
template<typename Work>
auto made_of_file(const QString& name, Work work) -> decltype(work(QByteArray())) {
    try {
        return work(table_text(read_file(name)));
    } catch (const std::bad_alloc&) {
        return {};
    }
}

} // namespace

QPolygonF airfoil_Read(QString fileName) {
    return made_of_file(fileName, normalized_outline);
}

QPolygonF airfoil_Read_Bytes(const QByteArray& bytes) {
    return normalized_outline(table_text(bytes));
}

QPolygonF airfoil_Read_All(QString fileName) {
    return made_of_file(fileName, outline_of_any_layout);
}

QPolygonF Read_Normal(QString fileName) {
    return made_of_file(fileName, one_outline);
}

QPolygonF Read_Symetric(QString fileName) {
    return made_of_file(fileName, half_contour);
}

QPolygonF Read_Eppler(QString fileName) {
    return made_of_file(fileName, three_columns);
}

QString FoilText_Read(QString fileName) {
    return made_of_file(fileName, [](const QByteArray& text) {
        QString repaired;
        for_each_line(text, [&](const QString& line) {
            repaired += Repair_NumString(clean(line)) + QLatin1Char('\n');
            return true;
        });
        return repaired;
    });
}

QPolygonF plainTextRead(QString mtext) {
    constexpr qint64 longest_line = 22;
    QTextStream stream(&mtext, QIODevice::ReadOnly);
    QPolygonF outline;
    for (QString line = stream.readLine(longest_line); !line.isNull();
         line = stream.readLine(longest_line)) {
        if (line.isEmpty())
            continue;
        QString first;
        QString second;
        bool in_first = true;
        line.replace(QLatin1Char(','), QLatin1Char('.'));
        for (qsizetype i = line.startsWith(QLatin1Char(' ')) ? 1 : 0; i < line.size() - 1; ++i) {
            const QChar c = line[i];
            if (c.isDigit() || c == QLatin1Char('.') || c == QLatin1Char('-'))
                (in_first ? first : second) += c;
            else
                in_first = false;
        }
        outline << QPointF(double(field_number(first)), double(field_number(second)));
    }
    return Normalize_airfoil2(outline, 1);
}
