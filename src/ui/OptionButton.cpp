#include "OptionButton.h"

#include "Color.h"
#include "FocusRing.h"
#include "Style.h"
#include "TextLine.h"
#include "core/HiddenMarks.h"

#include <QEvent>
#include <QFontMetrics>
#include <QPainter>

namespace tirlo {

namespace {

constexpr int padding = 7;
constexpr int markSize = 14;
constexpr int markSpacing = 9;
constexpr int textLeft = padding + markSize + markSpacing;
constexpr int descriptionSpacing = 1;
constexpr double markRadius = 4;
constexpr double markStroke = 1.5;
constexpr int wrapping = Qt::AlignLeft | Qt::AlignTop | Qt::TextWordWrap | Qt::TextWrapAnywhere;

QFont labelFont()
{
    return Style::font(Style::buttonSize, QFont::Medium);
}

QFont descriptionFont()
{
    return Style::font(Style::captionSize);
}

QRect wrapped(const QFont &font, const QString &text, int left, int top, int width)
{
    const int room = std::max(width - left - padding, 1);
    QRect place = QFontMetrics(font).boundingRect(QRect(left, top, room, 1), wrapping, text);
    place.setWidth(room);
    return place;
}

} // namespace

OptionButton::OptionButton(const QString &label, const QString &description,
                           bool severalMayBeChosen, QWidget *parent)
    : QAbstractButton(parent)
    , m_label(lineWithoutHiddenMarks(label))
    , m_description(withoutHiddenMarks(description))
{
    setCheckable(severalMayBeChosen);
    setAccessibleName(m_label);
    setAccessibleDescription(m_description);
    setFocusPolicy(Qt::TabFocus);
    setCursor(Qt::PointingHandCursor);
    setAttribute(Qt::WA_Hover);
    QSizePolicy policy(QSizePolicy::Expanding, QSizePolicy::Preferred);
    policy.setHeightForWidth(true);
    setSizePolicy(policy);
}

QSize OptionButton::sizeHint() const
{
    constexpr int usualWidth = 300;
    return {usualWidth, heightForWidth(usualWidth)};
}

int OptionButton::heightForWidth(int width) const
{
    const QRect last = m_description.isEmpty() ? labelRect(width) : descriptionRect(width);
    return last.bottom() + 1 + padding;
}

bool OptionButton::event(QEvent *event)
{
    if (event->type() == QEvent::HoverEnter || event->type() == QEvent::HoverLeave)
        update();
    return QAbstractButton::event(event);
}

void OptionButton::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const double opacity = isDown() ? Style::pressedOpacity
        : underMouse()              ? Style::hoveredOpacity
                                    : Style::raisedOpacity;
    const bool isRinged = FocusRing::isShown(*this);
    const double stroke = isRinged ? Style::focusRingWidth : Style::hairlineWidth;
    painter.setPen(QPen(
        isRinged ? Style::focusRing : withOpacity(Style::white, Style::strokeOpacity), stroke));
    painter.setBrush(withOpacity(Style::white, opacity));
    painter.drawRoundedRect(
        QRectF(rect()).adjusted(stroke / 2, stroke / 2, -stroke / 2, -stroke / 2),
        Style::buttonRadius, Style::buttonRadius);

    paintMark(painter);
    painter.setFont(labelFont());
    painter.setPen(Style::primaryText);
    painter.drawText(labelRect(width()), wrapping, m_label);
    if (m_description.isEmpty())
        return;
    painter.setFont(descriptionFont());
    painter.setPen(Style::explanationText);
    painter.drawText(descriptionRect(width()), wrapping, m_description);
}

QRect OptionButton::labelRect(int width) const
{
    return wrapped(labelFont(), m_label, textLeft, padding, width);
}

QRect OptionButton::descriptionRect(int width) const
{
    return wrapped(descriptionFont(), m_description, textLeft,
                   labelRect(width).bottom() + 1 + descriptionSpacing, width);
}

void OptionButton::paintMark(QPainter &painter) const
{
    const double middle = padding + QFontMetrics(labelFont()).height() / 2.0;
    const QRectF mark(padding + markStroke / 2, middle - markSize / 2.0 + markStroke / 2,
                      markSize - markStroke, markSize - markStroke);
    const double radius = isCheckable() ? markRadius : markSize / 2.0;
    const bool isChosen = isChecked() || isDown();
    painter.setPen(QPen(isChosen ? Style::primaryText : Style::secondaryText, markStroke));
    painter.setBrush(isChosen ? QBrush(Style::primaryText) : QBrush(Qt::NoBrush));
    painter.drawRoundedRect(mark, radius, radius);
    if (!isChosen || !isCheckable())
        return;
    painter.setPen(QPen(Style::onLight, markStroke, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    const QPointF tick[] = {mark.topLeft() + QPointF(3, 6.5), mark.topLeft() + QPointF(5.5, 9),
                            mark.topLeft() + QPointF(9.5, 4)};
    painter.drawPolyline(tick, 3);
}

} // namespace tirlo
