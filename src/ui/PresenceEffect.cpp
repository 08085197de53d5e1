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
    m_opacity = std::clamp(opacity, 0.0, 1.0);
    m_scale = scale;
    setEnabled(m_opacity < 1 || m_scale != 1);
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
    painter->setOpacity(m_opacity);
    painter->translate(centre);
    painter->scale(m_scale, m_scale);
    painter->translate(-centre);
    painter->drawPixmap(offset, picture);
    painter->restore();
}

} // namespace tirlo
