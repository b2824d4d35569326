// SPDX-FileCopyrightText: Aerolith developers
// Coordinate tables read line by line through a text stream.
#include "baseline/reader.h"

#include <QFile>
#include <QList>
#include <QTextStream>

#include <cmath>
#include <limits>

namespace baseline {

namespace {

struct Row {
    double column[3];
};

// Too large a number for single precision counts as no number.
double to_float(const QString& field) {
    bool ok = false;
    const double value = field.toDouble(&ok);
    if (!ok || std::abs(value) > double(std::numeric_limits<float>::max()))
        return 0.0;
    return double(float(value));
}

QList<Row> read_rows(const QString& fileName) {
    QList<Row> rows;
    QFile file(fileName);
    if (!file.open(QIODevice::ReadOnly | QIODevice::Text))
        return rows;
    QTextStream stream(&file);
    while (!stream.atEnd()) {
        const QString line = clean(stream.readLine());
        if (!is_numeric(line))
            continue;
        QString S[3];
        FindNumericSubStrings(line, S);
        Row row;
        for (int i = 0; i < 3; ++i)
            row.column[i] = to_float(Repair_NumString(S[i]));
        rows.append(row);
    }
    return rows;
}

int probe(QTextStream& stream) {
    int colNum = 0;
    int k = 0;
    int j = 0;
    double transX = 0.0;
    double xx[4] = {};
    while (k <= 2) {
        if (stream.atEnd())
            break;
        colNum = 0;
        const QString line = clean(stream.readLine());
        if (is_numeric(line)) {
            for (int i = 0; i <= int(line.size()) - 2; ++i) {
                if (line[i] == QLatin1Char('.') || line[i] == QLatin1Char(','))
                    ++colNum;
            }
            QString S[3];
            FindNumericSubStrings(line, S);
            bool ok = false;
            const double XXX = S[0].toDouble(&ok);
            if ((ok ? XXX : 0.0) <= 0.0 && j <= 3)
                transX = -1.0;
            xx[k] = to_float(Repair_NumString(S[0])) + transX;
            ++k;
        }
        ++j;
    }
    if (k == 3 && colNum == 2 && xx[0] >= 1.0 && xx[1] <= 0.0 && xx[2] > 0.0)
        colNum = 1;
    return colNum;
}

} // namespace

QString clean(QString s) {
    s.replace(QLatin1Char('\t'), QLatin1Char(' '));
    s.replace(QLatin1Char(','), QLatin1Char('.'));
    for (const char c : {'?', '!', '\'', '`', '_', '@', '#', '$', '%', '^', '&', '*', '(', ')',
                         '{', '}', '[',  ']', '|', ';', ':', '/', '>', '<', '~', '=', '+'})
        s.remove(QLatin1Char(c));
    s.remove(QChar(0x00AB));
    s.remove(QChar(0x00BB));
    return s.trimmed();
}

bool is_numeric(const QString& s) {
    if (s.isEmpty())
        return false;
    for (const QChar c : s) {
        if (c.isLetter())
            return false;
    }
    return true;
}

QString Repair_NumString(QString s) {
    if (s.startsWith(QLatin1Char('.')))
        s.replace(QLatin1String("."), QLatin1String("0."));
    else
        s.replace(QLatin1String("-."), QLatin1String("-0."));
    return s;
}

void FindNumericSubStrings(const QString& line, QString* S) {
    for (int i = 0; i < 3; ++i)
        S[i] = QLatin1String("");
    int index = 0;
    bool flag = false;
    for (const QChar c : line) {
        if (c.isDigit() || c == QLatin1Char('.') || c == QLatin1Char('-')) {
            if (index < 3)
                S[index] += c;
            flag = false;
        } else if (!flag) {
            ++index;
            flag = true;
        }
    }
}

QPolygonF Read_Normal(const QString& fileName) {
    QPolygonF poly;
    QFile file(fileName);
    if (!file.open(QIODevice::ReadOnly | QIODevice::Text))
        return poly;
    QTextStream stream(&file);
    while (!stream.atEnd()) {
        const QString line = clean(stream.readLine());
        if (!is_numeric(line))
            continue;
        QString S[3];
        FindNumericSubStrings(line, S);
        poly << QPointF(to_float(Repair_NumString(S[0])), to_float(Repair_NumString(S[1])));
    }
    return poly;
}

QPolygonF Read_Symetric(const QString& fileName) {
    const QList<Row> rows = read_rows(fileName);
    const int n = int(rows.size());
    QPolygonF poly;
    for (int i = n - 1; i >= 1; --i)
        poly << QPointF(rows[i].column[0], rows[i].column[1]);
    for (int i = 2; i <= n - 1; ++i)
        poly << QPointF(rows[i].column[0], -rows[i].column[1]);
    return poly;
}

QPolygonF Read_Eppler(const QString& fileName) {
    const QList<Row> rows = read_rows(fileName);
    const int n = int(rows.size());
    QPolygonF poly;
    for (int i = n - 1; i >= 0; --i)
        poly << QPointF(rows[i].column[0], rows[i].column[2]);
    for (int i = 0; i <= n - 1; ++i)
        poly << QPointF(rows[i].column[0], rows[i].column[1]);
    return poly;
}

QPolygonF airfoil_Read_All(const QString& fileName) {
    QFile file(fileName);
    if (!file.open(QIODevice::ReadOnly | QIODevice::Text))
        return QPolygonF();
    QTextStream stream(&file);
    switch (probe(stream)) {
    case 1:
        return Read_Symetric(fileName);
    case 2:
        return Read_Normal(fileName);
    case 3:
        return Read_Eppler(fileName);
    default:
        return QPolygonF();
    }
}

} // namespace baseline
