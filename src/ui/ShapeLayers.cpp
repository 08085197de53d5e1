#include "ShapeLayers.h"

#include "Bands.h"

#include <QGradient>
#include <QImage>

namespace tirlo {

namespace {

/// Kept from one shape to the next, and never smaller than the last one needed.
QImage &sharedPicture(const QSize &atLeast)
{
    static QImage picture;
    if (picture.width() < atLeast.width() || picture.height() < atLeast.height())
        picture = QImage(atLeast.expandedTo(picture.size()), QImage::Format_ARGB32_Premultiplied);
    return picture;
}

} // namespace

ShapeLayers::ShapeLayers(QPainter &painter, const QPainterPath &shape)
    : m_painter(painter)
{
    const QTransform toDevice = painter.deviceTransform();
    m_place = toDevice.mapRect(shape.boundingRect()).toAlignedRect().adjusted(-1, -1, 1, 1);
    m_toPicture = toDevice * QTransform::fromTranslate(-m_place.x(), -m_place.y());

    m_layers.begin(&sharedPicture(m_place.size()));
    m_layers.setRenderHint(QPainter::Antialiasing);
    m_layers.setCompositionMode(QPainter::CompositionMode_Clear);
    m_layers.fillRect(QRect(QPoint(), m_place.size()), Qt::black);
    m_layers.setCompositionMode(QPainter::CompositionMode_SourceOver);
    m_layers.setTransform(m_toPicture);
    m_layers.fillPath(shape, Qt::black);
    m_layers.resetTransform();
    m_layers.setCompositionMode(QPainter::CompositionMode_SourceAtop);
}

void ShapeLayers::add(const QGradient &gradient)
{
    QBrush brush(gradient);
    brush.setTransform(m_toPicture);
    fillInBands(m_layers, QRect(QPoint(), m_place.size()), brush);
}

ShapeLayers::~ShapeLayers()
{
    m_layers.end();
    m_painter.save();
    m_painter.resetTransform();
    const QTransform toLogical = m_painter.deviceTransform().inverted();
    m_painter.drawImage(toLogical.mapRect(QRectF(m_place)), sharedPicture(m_place.size()),
                        QRectF(QPointF(), m_place.size()));
    m_painter.restore();
}

} // namespace tirlo
