#include "IconButton.h"

#include "Color.h"
#include "FocusRing.h"
#include "Icon.h"
#include "Style.h"
#include "TextLine.h"

#include <QHelpEvent>
#include <QPainter>

#include <utility>

namespace tirlo {

namespace {

constexpr double pressedOpacity = 0.7;

} // namespace

IconButton::IconButton(const QSize &size, const IconButtonStyle &style, QWidget *parent)
    : QAbstractButton(parent)
    , m_shown(style)
    , m_style(style)
{
    setFixedSize(size);
    setFocusPolicy(Qt::TabFocus);
    setCursor(Qt::PointingHandCursor);
    setAttribute(Qt::WA_Hover);
}

void IconButton::setIcon(QLatin1String icon, const QString &meaning)
{
    if (icon == m_icon && meaning == accessibleName())
        return;
    m_icon = icon;
    setAccessibleName(meaning);
    update();
}

void IconButton::setStyle(const IconButtonStyle &style)
{
    m_style = style;
    m_share.jumpTo(1);
    m_frames.reset();
    if (style == std::exchange(m_shown, style))
        return;
    update();
}

void IconButton::fadeTo(const IconButtonStyle &style, const Animation &animation, FrameClock &clock)
{
    if (!isVisible())
        return setStyle(style);
    if (style == m_style)
        return;
    m_from = m_shown;
    m_style = style;
    m_share.jumpTo(0);
    m_share.animateTo(1, clock.permitted(animation), clock.now());
    showAt(clock.now());
    if (!m_share.isAtRest(clock.now()))
        m_frames = clock.subscribe([this](double time) { showAt(time); });
}

void IconButton::showAt(double time)
{
    m_shown = m_style;
    if (m_share.isAtRest(time)) {
        m_frames.reset();
    } else {
        const double share = m_share.valueAt(time);
        for (QColor IconButtonStyle::*color :
             {&IconButtonStyle::color, &IconButtonStyle::hoveredColor, &IconButtonStyle::fill,
              &IconButtonStyle::hoveredFill})
            m_shown.*color = mixed(m_from.*color, m_style.*color, share);
    }
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
    painter.setBrush(underMouse() ? m_shown.hoveredFill : m_shown.fill);
    painter.drawRoundedRect(rect(), m_shown.radius, m_shown.radius);

    const QRectF square((width() - m_shown.iconSide) / 2, (height() - m_shown.iconSide) / 2,
                        m_shown.iconSide, m_shown.iconSide);
    Icon::draw(painter, m_icon, square, underMouse() ? m_shown.hoveredColor : m_shown.color);

    if (FocusRing::isShown(*this))
        FocusRing::draw(painter, rect(), m_shown.radius);
}

} // namespace tirlo
