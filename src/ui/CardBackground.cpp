#include "CardBackground.h"

#include "Bands.h"
#include "Color.h"
#include "Style.h"

#include <QPainter>
#include <QPaintEvent>
#include <QRadialGradient>

namespace tirlo {

namespace {

constexpr double glowRadius = 280;
constexpr double glowEnd = 0.7;
/// Centre of the glow as a share of the card's size.
constexpr QPointF glowCentre{0.5, 1.3};

QColor glowColor(CardBackground::Wash wash)
{
    using enum CardBackground::Wash;
    switch (wash) {
    case red:
        return withOpacity(Style::failure, 0.55);
    case green:
        return withOpacity({0x34, 0xD3, 0x99}, 0.5);
    case pink:
        return withOpacity({0xF4, 0x72, 0xB6}, 0.55);
    case amber:
        return withOpacity(Style::waiting, 0.42);
    case cyan:
        return withOpacity({0x22, 0xD3, 0xEE}, 0.38);
    case indigo:
        return withOpacity({0x63, 0x66, 0xF1}, 0.5);
    case soft:
        return withOpacity(Style::white, 0.08);
    }
    return Qt::transparent;
}

QRadialGradient glow(CardBackground::Wash wash, const QSizeF &size)
{
    const QColor color = glowColor(wash);
    QRadialGradient gradient(size.width() * glowCentre.x(), size.height() * glowCentre.y(),
                             glowRadius);
    gradient.setColorAt(0, color);
    gradient.setColorAt(glowEnd, withOpacity(color, 0));
    return gradient;
}

} // namespace

CardBackground::CardBackground(std::optional<Wash> wash, QWidget *parent)
    : QWidget(parent)
    , m_wash(wash)
{
}

void CardBackground::setWash(std::optional<Wash> wash)
{
    if (m_wash == wash)
        return;
    m_wash = wash;
    m_picture = {};
    update();
}

void CardBackground::paintEvent(QPaintEvent *event)
{
    // What moves on the card has it painted again and again.
    QPainter painter(this);
    const double ratio = painter.deviceTransform().m11();
    const QSize pixels = (QSizeF(size()) * ratio).toSize();
    if (m_picture.size() != pixels) {
        m_picture = QPixmap(pixels);
        m_picture.setDevicePixelRatio(ratio);
        m_picture.fill(Qt::transparent);
        paintPicture();
    }
    drawInBands(painter, event->region(), m_picture);
}

void CardBackground::hideEvent(QHideEvent *event)
{
    m_picture = {};
    QWidget::hideEvent(event);
}

void CardBackground::paintPicture()
{
    QPainter painter(&m_picture);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(Style::card);
    painter.drawRoundedRect(rect(), Style::cardRadius, Style::cardRadius);
    if (m_wash) {
        painter.setBrush(glow(*m_wash, size()));
        painter.drawRoundedRect(rect(), Style::cardRadius, Style::cardRadius);
    }

    constexpr double half = Style::hairlineWidth / 2;
    painter.setPen(QPen(withOpacity(Style::white, Style::hairlineOpacity), Style::hairlineWidth));
    painter.setBrush(Qt::NoBrush);
    painter.drawRoundedRect(QRectF(rect()).adjusted(half, half, -half, -half),
                            Style::cardRadius - half, Style::cardRadius - half);
}

} // namespace tirlo
