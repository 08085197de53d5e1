#include "TextButton.h"

#include "Color.h"
#include "FocusRing.h"
#include "Style.h"
#include "TextLine.h"

#include <QEvent>
#include <QFontMetricsF>
#include <QPainter>

#include <cmath>

namespace tirlo {

namespace {

constexpr int padding = 6;
constexpr double radius = Style::lineHeight / 2.0;

} // namespace

TextButton::TextButton(QWidget *parent)
    : QAbstractButton(parent)
{
    setFont(Style::font(Style::captionSize, QFont::Medium));
    setFocusPolicy(Qt::TabFocus);
    setCursor(Qt::PointingHandCursor);
    setAttribute(Qt::WA_Hover);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

void TextButton::setWords(const QString &words)
{
    if (words == text())
        return;
    setText(words);
    setAccessibleName(words);
    updateGeometry();
}

QSize TextButton::sizeHint() const
{
    const double width = QFontMetricsF(font(), this).horizontalAdvance(text());
    return {int(std::ceil(width)) + 2 * padding, Style::lineHeight};
}

bool TextButton::event(QEvent *event)
{
    if (event->type() == QEvent::HoverEnter || event->type() == QEvent::HoverLeave)
        update();
    return QAbstractButton::event(event);
}

void TextButton::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const bool isLit = isChecked() || underMouse();
    const double fill = isDown() ? Style::pressedOpacity
        : isLit                  ? Style::hoveredOpacity
                                 : Style::raisedOpacity;
    painter.setPen(FocusRing::isShown(*this) ? QPen(Style::focusRing, Style::focusRingWidth)
                                             : QPen(Qt::NoPen));
    painter.setBrush(withOpacity(Style::white, fill));
    const double inset = FocusRing::isShown(*this) ? Style::focusRingWidth / 2 : 0;
    painter.drawRoundedRect(QRectF(rect()).adjusted(inset, inset, -inset, -inset), radius - inset,
                            radius - inset);
    painter.setFont(font());
    painter.setPen(isLit ? Style::primaryText : Style::hoveredText);
    TextLine::draw(painter, QRectF(rect()).adjusted(padding, 0, -padding, 0), text());
}

} // namespace tirlo
