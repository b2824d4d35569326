// SPDX-FileCopyrightText: Aerolith developers
#include "drawings/png.h"

#include "drawings/page_p.h"
#include "drawings/paint_p.h"

#include <QBuffer>
#include <QImage>
#include <QPainter>

#include <algorithm>

namespace drawings {

PngResult png(const Scene& scene) {
    const QRectF box = page_box(scene, 0.01);
    const QSize size = (box.size() * png_pixels).toSize();
    if (std::max(size.width(), size.height()) > png_limit)
        return {{},
                QStringLiteral("%1 x %2 pixels; the most are %3 on a side")
                    .arg(size.width())
                    .arg(size.height())
                    .arg(png_limit)};
    const QMutexLocker lock(&font_turn());
    const std::optional<QFont> font = fixed_font();
    if (!font)
        return {{}, missing_font()};
    QImage image(size, QImage::Format_RGB32);
    if (image.isNull())
        return {{}, QStringLiteral("not enough memory for it")};
    image.setDotsPerMeterX(qRound(1000.0 * png_pixels));
    image.setDotsPerMeterY(qRound(1000.0 * png_pixels));
    image.fill(Qt::white);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.scale(png_pixels, -png_pixels);
    painter.translate(-box.left(), -box.bottom());
    paint(painter, scene, *font);
    painter.end();
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    if (!image.save(&buffer, "PNG"))
        return {{}, QStringLiteral("not enough memory for it")};
    return {bytes, {}};
}

} // namespace drawings
