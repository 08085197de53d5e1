#include "OptionButton.h"

#include "AccessibleRole.h"
#include "Color.h"
#include "FocusRing.h"
#include "Style.h"
#include "core/HiddenMarks.h"

#include <QEvent>
#include <QFontMetrics>
#include <QPainter>

namespace tirlo {

namespace {

constexpr int usualWidth = 300;
constexpr int padding = 7;
constexpr int markSize = 14;
constexpr int markSpacing = 9;
constexpr int textLeft = padding + markSize + markSpacing;
constexpr int descriptionSpacing = 1;
constexpr double markRadius = 4;
constexpr double markStroke = 1.5;

QFont labelFont()
{
    return Style::font(Style::buttonSize, QFont::Medium);
}

QFont descriptionFont()
{
    return Style::font(Style::captionSize);
}

int roomIn(int width)
{
    return width - textLeft - padding;
}

} // namespace

OptionButton::OptionButton(const QString &label, const QString &description,
                           bool severalMayBeChosen, QWidget *parent)
    : QAbstractButton(parent)
    , m_severalMayBeChosen(severalMayBeChosen)
    , m_label(lineWithoutHiddenMarks(label), labelFont())
    , m_description(withoutHiddenMarks(description), descriptionFont())
{
    setCheckable(true);
    if (!severalMayBeChosen)
        AccessibleRole::set(*this, QAccessible::RadioButton);
    setAccessibleName(lineWithoutHiddenMarks(label));
    setAccessibleDescription(withoutHiddenMarks(description));
    setFocusPolicy(Qt::TabFocus);
    setCursor(Qt::PointingHandCursor);
    setAttribute(Qt::WA_Hover);
    QSizePolicy policy(QSizePolicy::Expanding, QSizePolicy::Preferred);
    policy.setHeightForWidth(true);
    setSizePolicy(policy);
}

QSize OptionButton::sizeHint() const
{
    return {usualWidth, QFontMetrics(labelFont()).height() + 2 * padding};
}

int OptionButton::heightForWidth(int width) const
{
    int height = m_label.heightFor(roomIn(width)) + 2 * padding;
    if (!accessibleDescription().isEmpty())
        height += descriptionSpacing + m_description.heightFor(roomIn(width));
    return height;
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
    const int room = roomIn(width());
    painter.setPen(Style::primaryText);
    m_label.draw(painter, QPointF(textLeft, padding), room);
    if (accessibleDescription().isEmpty())
        return;
    painter.setPen(Style::explanationText);
    const int top = padding + m_label.heightFor(room) + descriptionSpacing;
    m_description.draw(painter, QPointF(textLeft, top), room);
}

void OptionButton::paintMark(QPainter &painter) const
{
    const double middle = padding + QFontMetrics(labelFont()).height() / 2.0;
    const QRectF mark(padding + markStroke / 2, middle - markSize / 2.0 + markStroke / 2,
                      markSize - markStroke, markSize - markStroke);
    const double radius = m_severalMayBeChosen ? markRadius : markSize / 2.0;
    const bool isChosen = isChecked() || isDown();
    painter.setPen(QPen(isChosen ? Style::primaryText : Style::secondaryText, markStroke));
    painter.setBrush(isChosen ? QBrush(Style::primaryText) : QBrush(Qt::NoBrush));
    painter.drawRoundedRect(mark, radius, radius);
    if (!isChosen || !m_severalMayBeChosen)
        return;
    painter.setPen(QPen(Style::onLight, markStroke, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    const QPointF tick[] = {mark.topLeft() + QPointF(3, 6.5), mark.topLeft() + QPointF(5.5, 9),
                            mark.topLeft() + QPointF(9.5, 4)};
    painter.drawPolyline(tick, 3);
}

} // namespace tirlo
