#include "Icon.h"

#include <QFile>
#include <QIcon>
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

namespace {

QPixmap render(QLatin1String name, const QSize &size, const QColor &color)
{
    openResources();
    QFile file(QStringLiteral(":/icons/%1.svg").arg(name));
    if (!file.open(QIODevice::ReadOnly))
        return {};

    QPixmap picture(size);
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    QSvgRenderer(file.readAll()).render(&painter, QRectF(QPointF(), QSizeF(size)));
    // The drawing gives the shape, the caller the colour.
    painter.setCompositionMode(QPainter::CompositionMode_SourceIn);
    painter.fillRect(picture.rect(), color);
    return picture;
}

} // namespace

void draw(QPainter &painter, QLatin1String name, const QRectF &rect, const QColor &color)
{
    const QTransform toPixels = painter.deviceTransform();
    const double ratio = std::hypot(toPixels.m11(), toPixels.m12());
    const int side = int(std::ceil(rect.width() * ratio));
    const QString key
        = QStringLiteral("icon/%1/%2/%3").arg(name).arg(side).arg(color.rgba(), 0, 16);
    QPixmap picture;
    if (!QPixmapCache::find(key, &picture)) {
        picture = render(name, {side, side}, color);
        QPixmapCache::insert(key, picture);
    }
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    painter.drawPixmap(rect, picture, QRectF(picture.rect()));
}

QIcon menuBarIcon(const QColor &color)
{
    QIcon icon;
    for (const int ratio : {1, 2, 3})
        icon.addPixmap(render(QLatin1String("MenuBarIcon"), QSize(24, 18) * ratio, color));
    return icon;
}

} // namespace tirlo::Icon
