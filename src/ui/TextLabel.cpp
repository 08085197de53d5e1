#include "TextLabel.h"

#include "Style.h"
#include "TextLine.h"
#include "core/HiddenMarks.h"

#include <QFontMetricsF>
#include <QHelpEvent>
#include <QPainter>

#include <cmath>

namespace tirlo {

TextLabel::TextLabel(const QFont &font, const QColor &color, QWidget *parent)
    : QLabel(parent)
    , m_color(color)
{
    setTextFormat(Qt::PlainText);
    setTextInteractionFlags(Qt::NoTextInteraction);
    setFont(font);
    setSizePolicy(QSizePolicy::Maximum, QSizePolicy::Fixed);
}

void TextLabel::setLine(const QString &text)
{
    const QString shown = withoutHiddenMarks(text);
    if (shown == QLabel::text())
        return;
    m_line = TextLine::displayable(text);
    setText(shown);
}

void TextLabel::setElideMode(Qt::TextElideMode mode)
{
    m_elideMode = mode;
    update();
}

void TextLabel::setNeverElided()
{
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

QSize TextLabel::sizeHint() const
{
    const double width = QFontMetricsF(font(), this).horizontalAdvance(m_line);
    return {int(std::ceil(width)), Style::lineHeight};
}

QSize TextLabel::minimumSizeHint() const
{
    return {0, Style::lineHeight};
}

bool TextLabel::event(QEvent *event)
{
    if (event->type() != QEvent::ToolTip)
        return QLabel::event(event);
    const bool isWanted = m_alwaysHasToolTip || sizeHint().width() > textRect().width();
    if (isWanted && !text().isEmpty())
        TextLine::showToolTip(static_cast<QHelpEvent *>(event)->globalPos(), text(), this);
    return true;
}

void TextLabel::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.setPen(m_color);
    const QRect area = textRect();
    TextLine::draw(painter, area, TextLine::fitted(m_line, font(), m_elideMode, area.width()));
}

} // namespace tirlo
