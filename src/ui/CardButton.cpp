#include "CardButton.h"

#include "Color.h"
#include "FocusRing.h"
#include "Style.h"
#include "TextLine.h"

#include <QEvent>
#include <QFontMetricsF>
#include <QPainter>

#include <cmath>
#include <utility>

namespace tirlo {

namespace {

constexpr double hintSpacing = 6;
constexpr double hintPadding = 4;
constexpr double hintHeight = 15;
constexpr double hintTextOpacity = 0.55;
constexpr double hintChipOpacity = 0.4;
constexpr double disabledOpacity = 0.4;

QFont titleFont()
{
    return Style::font(Style::buttonSize, QFont::Medium);
}

QFont hintFont()
{
    return Style::font(Style::keyHintSize, QFont::Medium);
}

} // namespace

CardButton::CardButton(const CardButtonStyle &style, const QString &title, const QString &kbd,
                       std::function<void()> action, QWidget *parent)
    : QPushButton(parent)
    , m_style(style)
    , m_title(title)
    , m_kbd(kbd)
{
    setFont(titleFont());
    setAccessibleName(title);
    setFocusPolicy(Qt::TabFocus);
    setCursor(Qt::PointingHandCursor);
    setAttribute(Qt::WA_Hover);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    if (action)
        connect(this, &QPushButton::clicked, this, [run = std::move(action)] { run(); });
}

QSize CardButton::sizeHint() const
{
    const double width = titleWidth() + hintWidth() + 2 * Style::buttonPadding;
    return {int(std::ceil(width)), Style::buttonHeight};
}

bool CardButton::event(QEvent *event)
{
    if (event->type() == QEvent::HoverEnter || event->type() == QEvent::HoverLeave)
        update();
    return QPushButton::event(event);
}

void CardButton::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    if (!isEnabled())
        painter.setOpacity(disabledOpacity);

    const QColor fill = isDown()      ? m_style.pressedFill
        : underMouse() && isEnabled() ? m_style.hoveredFill
                                      : m_style.fill;
    painter.setPen(Qt::NoPen);
    painter.setBrush(fill);
    painter.drawRoundedRect(rect(), Style::buttonRadius, Style::buttonRadius);

    constexpr double half = Style::hairlineWidth / 2;
    painter.setPen(QPen(m_style.stroke, Style::hairlineWidth));
    painter.setBrush(Qt::NoBrush);
    painter.drawRoundedRect(QRectF(rect()).adjusted(half, half, -half, -half),
                            Style::buttonRadius - half, Style::buttonRadius - half);
    if (FocusRing::isShown(*this))
        FocusRing::draw(painter, rect(), Style::buttonRadius);

    const double left = (width() - titleWidth() - hintWidth()) / 2;
    painter.setFont(font());
    painter.setPen(m_style.text);
    TextLine::draw(painter, QRectF(left, 0, titleWidth(), height()), m_title);
    if (!m_kbd.isEmpty())
        paintHint(painter, left + titleWidth() + hintSpacing);
}

double CardButton::titleWidth() const
{
    return QFontMetricsF(font(), this).horizontalAdvance(m_title);
}

double CardButton::hintWidth() const
{
    if (m_kbd.isEmpty())
        return 0;
    return hintSpacing + 2 * hintPadding + QFontMetricsF(hintFont(), this).horizontalAdvance(m_kbd);
}

void CardButton::paintHint(QPainter &painter, double left) const
{
    // On half points, so that its outline is crisp.
    const double top = std::floor((height() - hintHeight) / 2) + 0.5;
    const QRectF chip(std::floor(left) + 0.5, top, hintWidth() - hintSpacing, hintHeight);
    painter.setPen(QPen(withOpacity(m_style.text, hintChipOpacity), Style::hairlineWidth));
    painter.setBrush(Qt::NoBrush);
    painter.drawRoundedRect(chip, Style::keyHintRadius, Style::keyHintRadius);

    painter.setFont(hintFont());
    painter.setPen(withOpacity(m_style.text, hintTextOpacity));
    TextLine::draw(painter, chip.adjusted(hintPadding, 0, -hintPadding, 0), m_kbd);
}

} // namespace tirlo
