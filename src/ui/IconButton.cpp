#include "IconButton.h"

#include "FocusRing.h"
#include "Icon.h"
#include "Style.h"
#include "TextLine.h"

#include <QHelpEvent>
#include <QPainter>

namespace tirlo {

namespace {

constexpr double pressedOpacity = 0.7;

} // namespace

IconButton::IconButton(const QSize &size, const IconButtonStyle &style, QWidget *parent)
    : QAbstractButton(parent)
    , m_style(style)
{
    setFixedSize(size);
    setFocusPolicy(Qt::TabFocus);
    setCursor(Qt::PointingHandCursor);
    setAttribute(Qt::WA_Hover);
}

void IconButton::setIcon(QLatin1String icon, const QString &meaning)
{
    m_icon = icon;
    setAccessibleName(meaning);
    update();
}

void IconButton::setStyle(const IconButtonStyle &style)
{
    if (style == m_style)
        return;
    m_style = style;
    update();
}

bool IconButton::event(QEvent *event)
{
    switch (event->type()) {
    case QEvent::HoverEnter:
    case QEvent::HoverLeave:
        update();
        break;
    case QEvent::ToolTip:
        TextLine::showToolTip(static_cast<QHelpEvent *>(event)->globalPos(), accessibleName(),
                              this);
        return true;
    default:
        break;
    }
    return QAbstractButton::event(event);
}

void IconButton::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    if (isDown())
        painter.setOpacity(pressedOpacity);

    painter.setPen(Qt::NoPen);
    painter.setBrush(underMouse() ? m_style.hoveredFill : m_style.fill);
    painter.drawRoundedRect(rect(), m_style.radius, m_style.radius);

    const QRectF square((width() - m_style.iconSide) / 2, (height() - m_style.iconSide) / 2,
                        m_style.iconSide, m_style.iconSide);
    Icon::draw(painter, m_icon, square, underMouse() ? m_style.hoveredColor : m_style.color);

    if (!FocusRing::isShown(*this))
        return;
    constexpr double half = Style::focusRingWidth / 2;
    painter.setPen(QPen(Style::focusRing, Style::focusRingWidth));
    painter.setBrush(Qt::NoBrush);
    painter.drawRoundedRect(QRectF(rect()).adjusted(half, half, -half, -half),
                            m_style.radius - half, m_style.radius - half);
}

} // namespace tirlo
