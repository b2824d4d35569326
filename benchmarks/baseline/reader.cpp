// SPDX-FileCopyrightText: Aerolith developers
// Coordinate tables read line by line through a text stream on the decoded text.
#include "baseline/reader.h"

#include <QFile>
#include <QList>
#include <QStringDecoder>
#include <QTextStream>

#include <algorithm>
#include <cmath>

namespace baseline {

namespace {

struct Row {
    double first;
    double second;
    double third;
};

bool is_numeric_line(const QString& cleaned) {
    return !cleaned.isEmpty() && isLatString(cleaned) == 0;
}

bool is_numeric_character(QChar c) {
    return c.isDigit() || c == QLatin1Char('.') || c == QLatin1Char('-');
}

double field(const QString& text) {
    return double(to_single(Repair_NumString(text)));
}

QString text_of(const QString& fileName) {
    QFile file(fileName);
    if (!file.open(QIODevice::ReadOnly))
        return QString();
    const QByteArray bytes = file.readAll();
    const auto encoding = QStringConverter::encodingForData(bytes);
    QString text = QStringDecoder(encoding.value_or(QStringConverter::Utf8)).decode(bytes);
    return text.remove(QLatin1Char('\r'));
}

QList<Row> numeric_rows(const QString& fileName) {
    QList<Row> rows;
    QString text = text_of(fileName);
    QTextStream in(&text);
    while (!in.atEnd()) {
        const QString line = clean(in.readLine());
        if (!is_numeric_line(line))
            continue;
        QString S[3];
        FindNumericSubStrings(line, S);
        rows.append({field(S[0]), field(S[1]), field(S[2])});
    }
    return rows;
}

int separators_but_last(const QString& line) {
    int count = 0;
    for (qsizetype i = 0; i + 1 < line.size(); ++i) {
        if (line[i] == QLatin1Char('.') || line[i] == QLatin1Char(','))
            ++count;
    }
    return count;
}

// 1, 2 or 3 for the three layouts, any other number for an unknown one.
int layout_of(const QString& fileName) {
    QString text = text_of(fileName);
    QTextStream in(&text);
    int k = 0;
    int j = 0;
    int colNum = 0;
    double transX = 0.0;
    double xx[4] = {};
    while (k <= 2 && !in.atEnd()) {
        colNum = 0;
        const QString line = clean(in.readLine());
        if (is_numeric_line(line)) {
            colNum = separators_but_last(line);
            QString S[3];
            FindNumericSubStrings(line, S);
            bool ok = false;
            double XXX = S[0].toDouble(&ok);
            if (!ok)
                XXX = 0.0;
            if (XXX <= 0.0 && j <= 3)
                transX = -1.0;
            xx[k] = field(S[0]) + transX;
            ++k;
        }
        ++j;
    }
    if (k > 2 && colNum == 2 && xx[0] >= 1.0 && xx[1] <= 0.0 && xx[2] > 0.0)
        return 1;
    return colNum;
}

} // namespace

QString clean(QString s) {
    s.replace(QLatin1Char('\t'), QLatin1Char(' '));
    s.replace(QLatin1Char(','), QLatin1Char('.'));
    const QString removed = QStringLiteral("?!'`_@#$%^&*(){}[]|;:/><~=+\u00AB\u00BB");
    for (const QChar c : removed)
        s.remove(c);
    return s.trimmed();
}

int isLatString(const QString& s) {
    for (const QChar c : s) {
        if (c.isLetter())
            return 1;
    }
    return 0;
}

QString Repair_NumString(QString s) {
    if (s.startsWith(QLatin1Char('.')))
        return s.replace(QStringLiteral("."), QStringLiteral("0."));
    return s.replace(QStringLiteral("-."), QStringLiteral("-0."));
}

void FindNumericSubStrings(const QString& line, QString* S) {
    for (int i = 0; i < 3; ++i)
        S[i] = QString();
    int index = 0;
    bool separator = false;
    for (const QChar c : line) {
        if (is_numeric_character(c)) {
            if (index < 3)
                S[index].append(c);
            separator = false;
        } else if (!separator) {
            ++index;
            if (index < 3)
                S[index] = QString();
            separator = true;
        }
    }
}

float to_single(const QString& s) {
    bool ok = false;
    const double value = s.toDouble(&ok);
    if (!ok || std::fabs(value) > 3.4028234663852886e38)
        return 0.0F;
    return float(value);
}

QPolygonF Read_Normal(const QString& fileName) {
    QPolygonF poly;
    for (const Row& row : numeric_rows(fileName))
        poly.append(QPointF(row.first, row.second));
    return poly;
}

QPolygonF Read_Symetric(const QString& fileName) {
    const QList<Row> rows = numeric_rows(fileName);
    QPolygonF poly;
    for (qsizetype i = rows.size() - 1; i >= 1; --i)
        poly.append(QPointF(rows[i].first, rows[i].second));
    for (qsizetype i = 2; i < rows.size(); ++i)
        poly.append(QPointF(rows[i].first, -rows[i].second));
    return poly;
}

QPolygonF Read_Eppler(const QString& fileName) {
    const QList<Row> rows = numeric_rows(fileName);
    QPolygonF poly;
    for (qsizetype i = rows.size() - 1; i >= 0; --i)
        poly.append(QPointF(rows[i].first, rows[i].third));
    for (const Row& row : rows)
        poly.append(QPointF(row.first, row.second));
    return poly;
}

QString FoilText_Read(const QString& fileName) {
    QString text = text_of(fileName);
    QTextStream in(&text);
    QString repaired;
    while (!in.atEnd())
        repaired += Repair_NumString(clean(in.readLine())) + QLatin1Char('\n');
    return repaired;
}

QPolygonF airfoil_Read_All(const QString& fileName) {
    switch (layout_of(fileName)) {
    case 1:
        return Read_Symetric(fileName);
    case 2:
        return Read_Normal(fileName);
    case 3:
        return Read_Eppler(fileName);
    default:
        return {};
    }
}

QPolygonF Normalize_airfoil2(const QPolygonF& poly, int rot) {
    if (poly.isEmpty())
        return {};
    double xmin = 10000.0;
    double xmax = -10000.0;
    for (const QPointF& p : poly) {
        if (p.x() < xmin)
            xmin = p.x();
        if (p.x() > xmax)
            xmax = p.x();
    }
    const double delta = xmax - xmin;
    QPolygonF scaled;
    for (const QPointF& p : poly)
        scaled.append(QPointF(p.x() / delta, p.y() * rot / delta));
    const double x0 = scaled.first().x();
    const double y0 = scaled.first().y();
    QPolygonF shifted;
    for (const QPointF& p : std::as_const(scaled)) {
        const double X = p.x() - x0 + 1.0;
        const double Y = p.y() - y0;
        if (!(X < 0.0 || X > 1.0))
            shifted.append(QPointF(X, Y));
    }
    return shifted;
}

QPolygonF airfoil_Read(const QString& fileName) {
    return Normalize_airfoil2(Normalize_airfoil2(airfoil_Read_All(fileName), 1), 1);
}

QPolygonF plainTextRead(QString mtext) {
    QPolygonF poly;
    QTextStream in(&mtext, QIODevice::ReadOnly);
    for (QString line = in.readLine(22); !line.isNull(); line = in.readLine(22)) {
        if (line.isEmpty())
            continue;
        QString fields[2];
        int flag = 0;
        for (qsizetype i = line.startsWith(QLatin1Char(' ')) ? 1 : 0; i < line.size() - 1; ++i) {
            if (line[i] == QLatin1Char(','))
                line[i] = QLatin1Char('.');
            if (is_numeric_character(line[i]))
                fields[flag].append(line[i]);
            else
                flag = 1;
        }
        poly.append(QPointF(double(to_single(fields[0])), double(to_single(fields[1]))));
    }
    return Normalize_airfoil2(poly, 1);
}

} // namespace baseline
