#pragma once

#include <QPainter>
#include <QPainterPath>
#include <QRect>
#include <QTransform>

namespace tirlo {

/// Fills one shape with several gradients, one over the other, at the price of one outline.
///
/// The outline is drawn once, smoothly, into a picture of its own; what was filled reaches the
/// painter when this object goes. One at a time, on the main thread.
class ShapeLayers
{
public:
    /// The shape is in the painter's coordinates, as are the gradients.
    ShapeLayers(QPainter &painter, const QPainterPath &shape);
    ~ShapeLayers();
    ShapeLayers(const ShapeLayers &) = delete;
    ShapeLayers &operator=(const ShapeLayers &) = delete;

    /// Lays the gradient over what is there; the first one should be opaque.
    void add(const QGradient &gradient);

private:
    QPainter &m_painter;
    /// Where the picture lies on the device, in its pixels.
    QRect m_place;
    QTransform m_toPicture;
    QPainter m_layers;
};

} // namespace tirlo
