// SPDX-FileCopyrightText: Aerolith developers
#include "drawings/pdf.h"

#include "drawings/page_p.h"
#include "drawings/paint_p.h"

#include <QBuffer>
#include <QMutex>
#include <QPainter>
#include <QPdfWriter>

#include <algorithm>
#include <cmath>

namespace drawings {

namespace {

constexpr double points_per_mm = 72.0 / 25.4;
constexpr int resolution = 1200;
constexpr double dots_per_mm = resolution / 25.4;

// The part of a drawing on one sheet, mm, and the margin around it.
constexpr double sheet_width = 277.0;
constexpr double sheet_height = 190.0;
constexpr double sheet_margin = 10.0;
constexpr double overlap = 4.0;
constexpr double label_height = 2.5;

// Replaces the writer's name and the time by a fixed number of blanks, since the time is longer in
// some time zones, and adjusts the offsets in the table at the end.
void clear_information(QByteArray& file) {
    constexpr qsizetype room = 128;
    constexpr qsizetype digits = 10;
    constexpr qsizetype entry = 20;
    const qsizetype start = file.indexOf("1 0 obj\n<<") + 10;
    const qsizetype end = file.indexOf(">>\nendobj", start);
    const qsizetype table = file.lastIndexOf("\nxref\n");
    const qsizetype place = file.lastIndexOf("startxref\n") + 10;
    if (start < 10 || end < 0 || end - start > room || table < 0 || place < table)
        return;
    const qsizetype moved = room - (end - start);
    const qsizetype place_end = file.indexOf('\n', place);
    file.replace(place, place_end - place, QByteArray::number(table + 1 + moved));
    for (qsizetype at = file.indexOf("\n", table + 6) + 1; file.mid(at + digits, 1) == " ";
         at += entry) {
        const qsizetype offset = file.mid(at, digits).toLongLong();
        if (offset > start)
            file.replace(at, digits,
                         QByteArray::number(offset + moved).rightJustified(digits, '0'));
    }
    file.replace(start, end - start, QByteArray(room, ' '));
}

class Pages {
public:
    Pages(const Scene& whole, const OutputSettings& given, const QFont& letters)
        : scene(whole), box(bounds(whole, given.flatness)), flatness(given.flatness), font(letters),
          buffer(&bytes), writer(open(buffer)) {
        writer.setResolution(resolution);
    }

    PdfResult whole() {
        box = page_box(scene, flatness);
        if (std::max(box.width(), box.height()) > pdf_limit)
            return {{},
                    QStringLiteral("a page of %1 x %2 mm; pages of PDF end at %3 mm")
                        .arg(box.width())
                        .arg(box.height())
                        .arg(pdf_limit)};
        constexpr double rounding = 1e-6;
        const QSizeF size(std::ceil(box.width() * points_per_mm - rounding),
                          std::ceil(box.height() * points_per_mm - rounding));
        set_page(QPageSize(size, QPageSize::Point, QString(), QPageSize::ExactMatch));
        painter.begin(&writer);
        show(box, {0.0, 0.0});
        return finished();
    }

    PdfResult sheets() {
        const int columns = int(std::ceil(box.width() / sheet_width));
        const int rows = int(std::ceil(box.height() / sheet_height));
        if (double(columns) * rows > most_sheets)
            return {{},
                    QStringLiteral("%1 x %2 sheets; the most are %3")
                        .arg(columns)
                        .arg(rows)
                        .arg(most_sheets)};
        set_page(QPageSize(QSizeF(297.0, 210.0), QPageSize::Millimeter, QString(),
                           QPageSize::ExactMatch));
        bool first = true;
        for (int row = 0; row < rows; ++row) {
            for (int column = 0; column < columns; ++column) {
                const QPointF corner(box.left() + column * sheet_width,
                                     box.bottom() - (row + 1) * sheet_height);
                const QRectF part(corner, QSizeF(sheet_width, sheet_height));
                if (!has_content(part))
                    continue;
                if (first)
                    painter.begin(&writer);
                else
                    writer.newPage();
                first = false;
                put_sheet(part, QStringLiteral("row %1 of %2, column %3 of %4")
                                    .arg(row + 1)
                                    .arg(rows)
                                    .arg(column + 1)
                                    .arg(columns));
            }
        }
        if (first)
            painter.begin(&writer);
        return finished();
    }

private:
    static QIODevice* open(QBuffer& buffer) {
        buffer.open(QIODevice::WriteOnly);
        return &buffer;
    }

    void set_page(const QPageSize& size) {
        writer.setPageLayout(QPageLayout(size, QPageLayout::Portrait, QMarginsF()));
    }

    PdfResult finished() {
        painter.end();
        buffer.close();
        clear_information(bytes);
        return {bytes, {}};
    }

    // Shows a part of the scene with its upper left corner at @p place on the page (mm).
    void show(const QRectF& part, QPointF place) {
        painter.save();
        painter.scale(dots_per_mm, dots_per_mm);
        painter.translate(place.x() - part.left(), place.y() + part.bottom());
        painter.scale(1.0, -1.0);
        paint(painter, scene, font);
        painter.restore();
    }

    void put_sheet(const QRectF& part, const QString& label) {
        const QRectF own(sheet_margin, sheet_margin, sheet_width, sheet_height);
        painter.save();
        painter.save();
        painter.scale(dots_per_mm, dots_per_mm);
        const QRectF shown = own.adjusted(-overlap, -overlap, overlap, overlap);
        painter.setClipRect(shown);
        painter.scale(1.0 / dots_per_mm, 1.0 / dots_per_mm);
        show(part, own.topLeft());
        painter.restore();

        painter.scale(dots_per_mm, dots_per_mm);
        painter.translate(0.0, 210.0);
        painter.scale(1.0, -1.0);
        const Look grey = {"#a0a0a4", line_width, {}, false};
        Scene marks;
        for (const double x : {sheet_margin, sheet_margin + sheet_width}) {
            for (const double y : {sheet_margin, sheet_margin + sheet_height}) {
                marks.draw(grey, line({x - overlap, y}, {x + overlap, y}));
                marks.draw(grey, line({x, y - overlap}, {x, y + overlap}));
            }
        }
        marks.draw(grey,
                   Text{{sheet_margin + 2.0 * overlap, sheet_margin + 1.0}, label_height, label});
        paint(painter, marks, font);
        painter.restore();
    }

    bool has_content(const QRectF& part) const {
        Scene single;
        for (const Element& element : scene.elements) {
            if (const auto* path = std::get_if<Path>(&element.shape)) {
                QPolygonF points = flattened(*path, flatness);
                if (path->closed)
                    points.append(path->start);
                for (qsizetype i = 1; i < points.size(); ++i) {
                    if (meet(part, points[i - 1], points[i]))
                        return true;
                }
                continue;
            }
            single.elements = {element};
            const QRectF own = bounds(single, flatness);
            if (own.right() >= part.left() && own.left() <= part.right() &&
                own.bottom() >= part.top() && own.top() <= part.bottom())
                return true;
        }
        return false;
    }

    const Scene& scene;
    QRectF box;
    const double flatness;
    const QFont font;
    QByteArray bytes;
    QBuffer buffer;
    QPdfWriter writer;
    QPainter painter;
};

} // namespace

PdfResult pdf(const Scene& scene, const OutputSettings& settings, Tiling tiling) {
    const QMutexLocker lock(&font_turn());
    const std::optional<QFont> font = fixed_font();
    if (!font)
        return {{}, missing_font()};
    Pages pages(scene, settings, *font);
    return tiling == Tiling::a4 ? pages.sheets() : pages.whole();
}

} // namespace drawings
