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

namespace {

QPixmap render(QLatin1String name, int side, const QColor &color)
{
    openResources();
    QFile file(QStringLiteral(":/icons/%1.svg").arg(name));
    if (!file.open(QIODevice::ReadOnly))
        return {};

    QPixmap picture(side, side);
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    QSvgRenderer(file.readAll()).render(&painter, QRectF(0, 0, side, side));
    // The drawing gives the shape, the caller the colour.
    painter.setCompositionMode(QPainter::CompositionMode_SourceIn);
    painter.fillRect(picture.rect(), color);
    return picture;
}

} // namespace

void draw(QPainter &painter, QLatin1String name, const QRectF &rect, const QColor &color)
{
    const double ratio = painter.device()->devicePixelRatio();
    const int side = int(std::ceil(rect.width() * ratio));
    const QString key
        = QStringLiteral("icon/%1/%2/%3").arg(name).arg(side).arg(color.rgba(), 0, 16);
    QPixmap picture;
    if (!QPixmapCache::find(key, &picture)) {
        picture = render(name, side, color);
        QPixmapCache::insert(key, picture);
    }
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    painter.drawPixmap(rect, picture, QRectF(picture.rect()));
}

} // namespace tirlo::Icon
