#include "CodeBlock.h"

#include "Color.h"
#include "Style.h"

#include <QPainter>

namespace tirlo {

namespace {

constexpr double fillOpacity = 0.06;

} // namespace

CodeBlock::CodeBlock(QWidget *parent)
    : TextLabel(Style::codeFont(Style::codeSize), Style::codeText, parent)
{
    setElideMode(Qt::ElideMiddle);
    setAlwaysHasToolTip();
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
}

QSize CodeBlock::sizeHint() const
{
    return {TextLabel::sizeHint().width() + 2 * Style::codePadding, Style::codeHeight};
}

QSize CodeBlock::minimumSizeHint() const
{
    return {2 * Style::codePadding, Style::codeHeight};
}

void CodeBlock::paintEvent(QPaintEvent *event)
{
    {
        QPainter painter(this);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(Qt::NoPen);
        painter.setBrush(withOpacity(Style::white, fillOpacity));
        painter.drawRoundedRect(rect(), Style::codeRadius, Style::codeRadius);
    }
    TextLabel::paintEvent(event);
}

QRect CodeBlock::textRect() const
{
    return rect().adjusted(Style::codePadding, 0, -Style::codePadding, 0);
}

} // namespace tirlo
