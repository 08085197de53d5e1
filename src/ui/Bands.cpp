#include "Bands.h"

#include <algorithm>

namespace tirlo {

namespace {

/// In rows of the device.
constexpr int bandHeight = 64;

template<typename Paint>
void inBands(const QRect &rect, int height, Paint paint)
{
    for (int y = 0; y < rect.height(); y += height)
        paint(QRect(rect.x(), rect.y() + y, rect.width(), std::min(height, rect.height() - y)));
}

/// In points, for a device with that many rows to a point.
int bandHeightAt(double ratio)
{
    return std::max(1, int(bandHeight / ratio));
}

} // namespace

void fillInBands(QPainter &painter, const QRect &rect, const QBrush &brush)
{
    const double ratio = std::max(1.0, painter.deviceTransform().m22());
    inBands(rect, bandHeightAt(ratio), [&](const QRect &band) { painter.fillRect(band, brush); });
}

void drawInBands(QPainter &painter, const QRegion &region, const QPixmap &picture)
{
    const double ratio = picture.devicePixelRatio();
    for (const QRect &rect : region) {
        inBands(rect, bandHeightAt(ratio), [&](const QRect &band) {
            const QRectF source(QPointF(band.topLeft()) * ratio, QSizeF(band.size()) * ratio);
            painter.drawPixmap(QRectF(band), picture, source);
        });
    }
}

} // namespace tirlo
