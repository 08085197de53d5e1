#include "ColorDot.h"

#include "Style.h"

#include <QPainter>

namespace tirlo {

ColorDot::ColorDot(QWidget *parent)
    : QWidget(parent)
{
    setFixedSize(Style::dotDiameter, Style::dotDiameter);
}

void ColorDot::setColor(const QColor &color)
{
    if (color == m_color)
        return;
    m_color = color;
    update();
}

void ColorDot::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(m_color);
    painter.drawEllipse(rect());
}

} // namespace tirlo
