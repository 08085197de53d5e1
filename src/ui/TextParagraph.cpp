#include "TextParagraph.h"

#include "TextLine.h"
#include "core/HiddenMarks.h"

#include <QFontMetricsF>
#include <QHelpEvent>
#include <QPainter>
#include <QTextLayout>

#include <algorithm>
#include <cmath>

namespace tirlo {

TextParagraph::TextParagraph(const QFont &font, const QColor &color, int mostLines, QWidget *parent)
    : QLabel(parent)
    , m_color(color)
    , m_mostLines(mostLines)
{
    setTextFormat(Qt::PlainText);
    setFont(font);
    QSizePolicy policy(QSizePolicy::Expanding, QSizePolicy::Preferred);
    policy.setHeightForWidth(true);
    setSizePolicy(policy);
}

void TextParagraph::showText(const QString &text)
{
    const QString shown = withoutHiddenMarks(text);
    if (shown == QLabel::text())
        return;
    m_shown = TextLine::displayable(text.simplified());
    setText(shown);
    updateGeometry();
}

QSize TextParagraph::sizeHint() const
{
    return {0, fontMetrics().lineSpacing()};
}

int TextParagraph::heightForWidth(int width) const
{
    return std::max(int(linesIn(width).size()), 1) * fontMetrics().lineSpacing();
}

bool TextParagraph::event(QEvent *event)
{
    if (event->type() != QEvent::ToolTip)
        return QLabel::event(event);
    const QStringList lines = linesIn(width());
    if (!lines.isEmpty() && lines.last().endsWith(u'…'))
        TextLine::showToolTip(static_cast<QHelpEvent *>(event)->globalPos(), text(), this);
    return true;
}

void TextParagraph::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.setPen(m_color);
    painter.setFont(font());
    const int spacing = fontMetrics().lineSpacing();
    const QStringList lines = linesIn(width());
    for (int i = 0; i < lines.size(); ++i)
        painter.drawText(QRect(0, i * spacing, width(), spacing),
                         int(Qt::AlignVCenter)
                             | (lines[i].isRightToLeft() ? Qt::AlignRight : Qt::AlignLeft),
                         lines[i]);
}

QStringList TextParagraph::linesIn(int width) const
{
    QStringList lines;
    QTextOption option;
    option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    QTextLayout layout(m_shown, font());
    layout.setTextOption(option);
    layout.beginLayout();
    for (QTextLine line = layout.createLine(); line.isValid(); line = layout.createLine()) {
        line.setLineWidth(std::max(width, 1));
        if (lines.size() + 1 == m_mostLines) {
            lines.append(TextLine::elided(m_shown.mid(line.textStart()),
                                          QFontMetricsF(font(), this), Qt::ElideRight, width));
            break;
        }
        lines.append(m_shown.mid(line.textStart(), line.textLength()).trimmed());
    }
    layout.endLayout();
    return lines;
}

} // namespace tirlo
