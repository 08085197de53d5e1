#include "CardField.h"

#include "Color.h"
#include "Style.h"

#include <QKeyEvent>
#include <QPainter>

namespace tirlo {

namespace {

constexpr int fieldWidth = 110;

} // namespace

CardField::CardField(const QString &name, QWidget *parent)
    : QLineEdit(parent)
{
    setFrame(false);
    setFont(Style::font(Style::buttonSize));
    setPlaceholderText(name);
    setAccessibleName(name);
    setTextMargins(Style::codePadding, 0, Style::codePadding, 0);
    QPalette colors = palette();
    colors.setColor(QPalette::Base, Qt::transparent);
    colors.setColor(QPalette::Text, Style::primaryText);
    colors.setColor(QPalette::PlaceholderText, Style::secondaryText);
    colors.setColor(QPalette::Highlight, withOpacity(Style::focusRing, 0.6));
    colors.setColor(QPalette::HighlightedText, Style::primaryText);
    setPalette(colors);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
}

QSize CardField::sizeHint() const
{
    return {fieldWidth, Style::buttonHeight};
}

QSize CardField::minimumSizeHint() const
{
    return sizeHint();
}

void CardField::paintEvent(QPaintEvent *event)
{
    {
        const bool isFocused = hasFocus();
        const double width = isFocused ? Style::focusRingWidth : Style::hairlineWidth;
        QPainter painter(this);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(QPen(
            isFocused ? Style::focusRing : withOpacity(Style::white, Style::strokeOpacity), width));
        painter.setBrush(withOpacity(Style::white, Style::strokeOpacity / 2));
        painter.drawRoundedRect(
            QRectF(rect()).adjusted(width / 2, width / 2, -width / 2, -width / 2),
            Style::buttonRadius, Style::buttonRadius);
    }
    QLineEdit::paintEvent(event);
}

void CardField::keyPressEvent(QKeyEvent *event)
{
    if (event->key() != Qt::Key_Escape) {
        QLineEdit::keyPressEvent(event);
        return;
    }
    clear();
    clearFocus();
}

void CardField::focusInEvent(QFocusEvent *event)
{
    QLineEdit::focusInEvent(event);
    Q_EMIT focusChanged(true);
}

void CardField::focusOutEvent(QFocusEvent *event)
{
    QLineEdit::focusOutEvent(event);
    Q_EMIT focusChanged(false);
}

} // namespace tirlo
