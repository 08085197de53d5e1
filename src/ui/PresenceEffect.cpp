#include "PresenceEffect.h"

#include <QPainter>
#include <QWidget>

#include <algorithm>

namespace tirlo {

PresenceEffect::PresenceEffect(QWidget *widget)
    : QGraphicsEffect(widget)
{
    setEnabled(false);
    widget->setGraphicsEffect(this);
}

void PresenceEffect::setPresence(double opacity, double scale)
{
    const double seen = std::clamp(opacity, 0.0, 1.0);
    if (seen == m_opacity && scale == m_scale)
        return;
    m_opacity = seen;
    m_scale = scale;
    changed();
}

void PresenceEffect::setOutline(const QPainterPath &outline)
{
    if (outline == m_outline)
        return;
    m_outline = outline;
    changed();
}

void PresenceEffect::changed()
{
    setEnabled(m_opacity < 1 || m_scale != 1 || !m_outline.isEmpty());
    update();
}

void PresenceEffect::draw(QPainter *painter)
{
    if (m_opacity <= 0)
        return;
    QPoint offset;
    const QPixmap picture = sourcePixmap(Qt::LogicalCoordinates, &offset, NoPad);
    const QPointF centre = sourceBoundingRect().center();

    painter->save();
    painter->setRenderHint(QPainter::SmoothPixmapTransform);
    painter->setRenderHint(QPainter::Antialiasing);
    if (!m_outline.isEmpty())
        painter->setClipPath(m_outline, Qt::IntersectClip);
    painter->setOpacity(m_opacity);
    painter->translate(centre);
    painter->scale(m_scale, m_scale);
    painter->translate(-centre);
    painter->drawPixmap(offset, picture);
    painter->restore();
}

} // namespace tirlo
