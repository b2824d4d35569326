// SPDX-FileCopyrightText: Aerolith developers
// Known sections as tables of every layout with the oddities of real files, from a seed.
#include "generatedtables.h"

#include <QList>
#include <QRandomGenerator>
#include <QStringEncoder>

#include <algorithm>
#include <cmath>

namespace {

// A number as written in the table, and the fraction of the chord that it means.
struct Number {
    QByteArray text;
    double meaning = 0.0;
};

using Row = QList<Number>;

constexpr double millimetres = 250.0;

struct Point {
    Number x, y;
    QPointF meaning() const { return {x.meaning, y.meaning}; }
};

using SidePoints = QList<Point>; // from the nose to the trailing edge

class Maker {
public:
    explicit Maker(quint32 seed) : random(seed) {}
    GeneratedTable table();

private:
    int below(int bound) { return random.bounded(bound); }
    bool one_in(int n) { return below(n) == 0; }
    template<typename T>
    T one_of(std::initializer_list<T> values) {
        return *(values.begin() + below(int(values.size())));
    }
    void tell(const char* what) { result.oddities += QByteArray(what) + "; "; }

    void make_section();
    Number number(double fraction);
    void choose_format();
    void choose_layout();
    void write_rows();
    QByteArray row_text(const Row& row);
    void damage_row();
    void put_together();
    QByteArray encoded(const QString& text);

    void add(Point point) { rows.append({point.x, point.y}); }
    void gap() { rows.append(Row()); }
    void set_outline(const SidePoints& first, const SidePoints& second);

    void selig();
    void loop();
    void halves();
    void half();
    void columns();
    void pairs();
    void turns();
    void lep();
    void vsp();

    QRandomGenerator random;
    GeneratedTable result;
    SidePoints upper, lower;
    bool symmetric = false;
    bool same_x = true;
    bool thick_edge = false;

    double unit = 1.0;
    int decimals = 6;
    bool counted = false; // the layout's own counts need a plain head
    QByteArrayList head;  // lines before the rows that belong to the layout
    QList<Row> rows;      // an empty row is a blank line
    QByteArrayList lines;
    QByteArray separator = " ";
    bool decimal_commas = false;
    int exponents = 0; // 0: none, 1: E, 2: d
    bool no_leading_zero = false;
};

Number Maker::number(double fraction) {
    Number number;
    number.text = QByteArray::number(fraction * unit, 'f', decimals);
    if (number.text.toDouble() == 0.0)
        number.text = QByteArray::number(0.0, 'f', decimals);
    number.meaning = number.text.toDouble() / unit;
    return number;
}

// The thickness and camber of the four-digit family, either on stations that both sides share or
// with the thickness perpendicular to the mean line.
void Maker::make_section() {
    const int steps = 7 + below(one_in(5) ? 90 : 40);
    const double thickness = 0.05 + 0.01 * below(18);
    symmetric = one_in(4);
    same_x = symmetric || one_in(2);
    const double camber = symmetric ? 0.0 : 0.01 * (1 + below(5));
    const double at = 0.1 * (3 + below(4));
    thick_edge = one_in(2);
    for (int i = 0; i <= steps; ++i) {
        const double part = double(i) / steps;
        const double x = 1.0 - std::cos(0.5 * M_PI * part);
        const double last = thick_edge ? -0.1015 : -0.1036;
        double half =
            5.0 * thickness *
            (0.2969 * std::sqrt(x) + x * (-0.1260 + x * (-0.3516 + x * (0.2843 + x * last))));
        if (i == steps && !thick_edge)
            half = 0.0;
        const bool front = x < at;
        const double scale = camber / (front ? at * at : (1.0 - at) * (1.0 - at));
        const double line = scale * ((front ? 0.0 : 1.0 - 2.0 * at) + 2.0 * at * x - x * x);
        const double angle = same_x ? 0.0 : std::atan(2.0 * scale * (at - x));
        upper.append({number(x - half * std::sin(angle)), number(line + half * std::cos(angle))});
        lower.append({number(x + half * std::sin(angle)), number(line - half * std::cos(angle))});
    }
}

void Maker::set_outline(const SidePoints& first, const SidePoints& second) {
    for (int i = int(first.size()) - 1; i >= 0; --i)
        result.points.append(first[i].meaning());
    for (int i = 1; i < second.size(); ++i)
        result.points.append(second[i].meaning());
}

void Maker::selig() {
    result.layout = "selig";
    set_outline(upper, lower);
    for (int i = int(upper.size()) - 1; i >= 0; --i)
        add(upper[i]);
    if (one_in(8)) {
        tell("blank line at the nose");
        gap();
    }
    for (int i = 1; i < lower.size(); ++i)
        add(lower[i]);
    if (one_in(8)) {
        tell("grid extents");
        head = {one_in(2) ? "-2.0 3.0 -2.5 3.5" : "-2.000 3.000 -2.646 3.454 0.5"};
    } else if (one_in(12)) {
        tell("blade table");
        head = {QByteArray::number(rows.size() + 1) + "   NumCoords   ! with the reference",
                "! reference", number(0.25).text + " 0", "! shape"};
    }
}

void Maker::loop() {
    result.layout = "loop";
    set_outline(lower, upper);
    for (const Point& point : upper)
        add(point);
    for (int i = int(lower.size()) - (thick_edge ? 1 : 2); i >= (one_in(2) ? 0 : 1); --i)
        add(lower[i]);
}

void Maker::halves() {
    result.layout = "lednicer";
    set_outline(upper, lower);
    const bool from_edge = one_in(6);
    const auto write = [&](SidePoints side) {
        if (from_edge)
            std::reverse(side.begin(), side.end());
        for (const Point& point : side)
            add(point);
    };
    write(upper);
    if (one_in(2))
        gap();
    write(lower);
    if (one_in(2)) {
        const QByteArray point = one_of<const char*>({"", ".", ".0"});
        head = {QByteArray::number(upper.size()) + point + "   " +
                QByteArray::number(lower.size()) + point};
        if (one_in(2))
            head.append("");
        counted = true;
    }
}

void Maker::half() {
    result.layout = "half";
    SidePoints image = upper;
    for (Point& point : image)
        point.y.meaning = 0.0 - point.y.meaning;
    set_outline(upper, image);
    for (const Point& point : upper)
        add(point);
}

void Maker::columns() {
    result.layout = "columns";
    set_outline(upper, lower);
    for (int i = 0; i < upper.size(); ++i)
        rows.append({upper[i].x, upper[i].y, lower[i].y});
    if (one_in(3))
        std::reverse(rows.begin(), rows.end());
}

void Maker::pairs() {
    result.layout = "pairs";
    set_outline(upper, lower);
    for (int i = 0; i < upper.size(); ++i)
        rows.append({upper[i].x, upper[i].y, lower[i].x, lower[i].y});
}

void Maker::turns() {
    result.layout = "turns";
    set_outline(upper, lower);
    add(upper[0]);
    for (int i = 1; i < upper.size(); ++i) {
        add(upper[i]);
        if (thick_edge || i + 1 < upper.size())
            add(lower[i]);
    }
}

void Maker::lep() {
    result.layout = "lep";
    set_outline(upper, lower);
    for (int i = int(upper.size()) - 1; i >= 0; --i)
        add(upper[i]);
    for (int i = 1; i < lower.size(); ++i)
        add(lower[i]);
    const int first = int(upper.size()) + 1 + below(3);
    const int intake = 1 + below(3);
    head = {QByteArray::number(rows.size()), " " + QByteArray::number(first),
            QByteArray::number(intake) + " ", QByteArray::number(rows.size() + 2 - first - intake)};
    counted = true;
}

void Maker::vsp() {
    result.layout = "vsp";
    const bool mirrored = symmetric && one_in(2);
    set_outline(upper, lower);
    head = {QByteArray(mirrored ? "1" : "0") + "\tSym Flag (0 - No, 1 - Yes)",
            QByteArray::number(upper.size()) + "\tNum Pnts Upper",
            QByteArray::number(lower.size()) + "\tNum Pnts Lower"};
    for (const Point& point : upper)
        add(point);
    if (!mirrored) {
        gap();
        for (const Point& point : lower)
            add(point);
    }
    counted = true;
}

void Maker::choose_format() {
    unit = one_of<double>({1.0, 1.0, 1.0, 1.0, 100.0, 1000.0, millimetres});
    decimals = (unit > 1.0 ? 3 : 5) + below(5);
    separator = one_of<const char*>({" ", "  ", "\t", " \t ", ",", ", ", ";", "; ", " "});
    if (!separator.contains(',') && one_in(5)) {
        decimal_commas = true;
        tell("decimal commas");
    }
    if (one_in(8))
        exponents = 1 + below(2);
    no_leading_zero = exponents == 0 && one_in(5);
}

void Maker::choose_layout() {
    QList<void (Maker::*)()> layouts = {&Maker::selig,  &Maker::selig, &Maker::loop, &Maker::halves,
                                        &Maker::halves, &Maker::pairs, &Maker::lep,  &Maker::vsp};
    if (symmetric)
        layouts.append(&Maker::half);
    if (same_x)
        layouts += {&Maker::columns, &Maker::turns};
    if (one_in(2)) {
        tell("lower side first");
        if (!symmetric)
            std::swap(upper, lower);
    }
    (this->*layouts[below(int(layouts.size()))])();
}

QByteArray Maker::row_text(const Row& row) {
    QByteArrayList fields;
    for (const Number& number : row) {
        QByteArray text = number.text;
        if (exponents > 0) {
            text = QByteArray::number(text.toDouble(), 'E', 16);
            if (exponents == 2)
                text.replace('E', one_in(2) ? 'd' : 'D');
        }
        if (no_leading_zero && text.startsWith("0."))
            text = text.mid(1);
        if (no_leading_zero && text.startsWith("-0."))
            text = "-" + text.mid(2);
        if (decimal_commas)
            text.replace('.', ',');
        fields.append(text);
    }
    return fields.join(separator);
}

void Maker::write_rows() {
    const bool turns = result.layout == "turns";
    if (rows[0].size() == 2 && one_in(8) && result.layout != "half" && !turns) {
        tell("z");
        const Number z = number(one_in(2) ? 0.0 : 0.5);
        for (Row& row : rows) {
            if (!row.isEmpty())
                row.append(z);
        }
    }
    if (!counted && head.isEmpty() && one_in(8)) {
        tell("point numbers");
        int count = 0;
        for (Row& row : rows) {
            if (!row.isEmpty())
                row.prepend({QByteArray::number(++count), 0.0});
        }
    }
    const bool brackets = one_in(20);
    const bool end_separator = one_in(20);
    const bool indent = one_in(3);
    const bool double_spaced = one_in(30);
    for (const Row& row : rows) {
        QByteArray text = row_text(row);
        if (row.isEmpty()) {
            lines.append(text);
            continue;
        }
        if (brackets)
            text = "(" + text + ")";
        if (end_separator)
            text += separator.trimmed();
        lines.append((indent ? "    " : "") + text);
        if (double_spaced)
            lines.append("");
    }
    if (brackets)
        tell("brackets");
    if (end_separator)
        tell("separators at the end");
    if (double_spaced)
        tell("double-spaced");
}

void Maker::damage_row() {
    QList<int> places;
    for (int i = 0; i < lines.size(); ++i) {
        if (!lines[i].isEmpty())
            places.append(i);
    }
    const int place = places[below(int(places.size()))];
    const char point = decimal_commas ? ',' : '.';
    QByteArray& line = lines[place];
    const int at = int(line.indexOf(point));
    switch (below(4)) {
    case 0:
        if (at < 1 || line[at - 1] != '0')
            return;
        tell("letter O");
        line[at - 1] = 'O';
        break;
    case 1:
        if (at < 0 || at + 2 >= line.size())
            return;
        tell("second point");
        line.insert(at + 2, point);
        break;
    case 2:
        tell("nan");
        line = line.trimmed();
        line = line.left(line.lastIndexOf(separator) + separator.size()) + "nan";
        break;
    default: {
        if (separator.trimmed().size() > 0)
            return;
        const int last = int(line.trimmed().lastIndexOf(separator));
        if (last < 1)
            return;
        tell("a number short");
        line = line.trimmed().left(last);
        break;
    }
    }
    result.damaged = true;
}

void Maker::put_together() {
    QByteArrayList above;
    const bool titled = result.layout == "lep" || result.layout == "vsp" || !one_in(6);
    if (titled) {
        const char* const title = one_of<const char*>(
            {"NACA 0012", " NACA 64-418 (1.5%)", "E63  (4.25%)", "12.5% CLARK", "# MH 45",
             "; S5020", "! SD7032", "% FX 60-126", "// AG35", "SCH\xc3\x9cTTE 2", "Airfoil 1.0 0.5",
             "S1223 RTL", "AG-24 by M. D."});
        above.append(result.layout == "lep" ? "profile" : title);
        if (result.layout == "vsp")
            above.append("Section name");
        else if (!counted && one_in(6))
            above.append(one_of<const char*>({"from a report of 1933", "x y", "x/c  y/c", "", "#",
                                              "Re = 0.5e6, Alpha0 = 0.82 degrees"}));
    }
    above += head;
    QByteArrayList below_rows;
    if (one_in(4)) {
        tell("footer");
        below_rows = {"", one_of<const char*>({"end", "http://somewhere.net/a1.htm", "25/09/2007",
                                               "12.11.2004", "Neutralpunktlage: 25,45 %",
                                               "Profili 2.0 (c) 1999"})};
    }
    const QByteArray end = one_of<const char*>({"\n", "\n", "\r\n", "\r"});
    QByteArray text = (above + lines + below_rows).join(end);
    if (!one_in(4))
        text += end;
    if (one_in(15)) {
        tell("DOS end");
        text += '\x1a';
    }
    result.bytes = encoded(QString::fromUtf8(text));
}

QByteArray Maker::encoded(const QString& text) {
    const auto wide = [&](QStringConverter::Encoding encoding, bool mark) {
        tell(QStringConverter::nameForEncoding(encoding));
        QStringEncoder encoder(encoding, mark ? QStringConverter::Flag::WriteBom
                                              : QStringConverter::Flag::Default);
        return QByteArray(encoder.encode(text));
    };
    switch (below(24)) {
    case 0:
        return wide(QStringConverter::Utf8, true);
    case 1:
        return wide(QStringConverter::Utf16LE, one_in(2));
    case 2:
        return wide(QStringConverter::Utf16BE, one_in(2));
    case 3:
        return wide(QStringConverter::Utf32LE, true);
    case 4:
        return wide(QStringConverter::Utf32BE, true);
    case 5:
    case 6:
        return text.toLatin1();
    default:
        return text.toUtf8();
    }
}

GeneratedTable Maker::table() {
    choose_format();
    make_section();
    choose_layout();
    write_rows();
    if (one_in(8))
        damage_row();
    put_together();
    result.in_millimetres = unit == millimetres;
    return result;
}

} // namespace

GeneratedTable generated_outline_table(quint32 seed) {
    return Maker(seed).table();
}
