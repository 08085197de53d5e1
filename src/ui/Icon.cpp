#include "Icon.h"

#include <QFile>
#include <QPainter>
#include <QPixmapCache>
#include <QSvgRenderer>

#include <cmath>

// Resources of a static library are only there once asked for.
static void openResources()
{
    Q_INIT_RESOURCE(icons);
}

namespace tirlo::Icon {

QPixmap picture(QLatin1String name, int side, const QColor &color)
{
    openResources();
    QFile file(QStringLiteral(":/icons/%1.svg").arg(name));
    if (!file.open(QIODevice::ReadOnly))
        return {};

    QPixmap picture(side, side);
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    QSvgRenderer drawing(file.readAll());
    drawing.setAspectRatioMode(Qt::KeepAspectRatio);
    drawing.render(&painter, QRectF(picture.rect()));
    // The drawing gives the shape, the caller the colour.
    painter.setCompositionMode(QPainter::CompositionMode_SourceIn);
    painter.fillRect(picture.rect(), color);
    return picture;
}

void draw(QPainter &painter, QLatin1String name, const QRectF &rect, const QColor &color)
{
    const QTransform toPixels = painter.deviceTransform();
    const double ratio = std::hypot(toPixels.m11(), toPixels.m12());
    const int side = int(std::ceil(rect.width() * ratio));
    const QString key
        = QStringLiteral("icon/%1/%2/%3").arg(name).arg(side).arg(color.rgba(), 0, 16);
    QPixmap drawn;
    if (!QPixmapCache::find(key, &drawn)) {
        drawn = picture(name, side, color);
        QPixmapCache::insert(key, drawn);
    }
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    painter.drawPixmap(rect, drawn, QRectF(drawn.rect()));
}

} // namespace tirlo::Icon
