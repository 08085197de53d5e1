#include "WrappedText.h"

#include <QFont>
#include <QPainter>

#include <algorithm>
#include <cmath>

namespace tirlo {

namespace {

constexpr int longestWord = 2000;

bool hasLongWord(const QString &text)
{
    int length = 0;
    return std::ranges::any_of(text, [&length](QChar character) {
        length = character.isSpace() ? 0 : length + 1;
        return length > longestWord;
    });
}

/// A layout knows a line's end by another character.
QString withSeparators(QString text)
{
    return text.replace(u'\n', QChar::LineSeparator);
}

} // namespace

QTextOption::WrapMode wrapModeFor(const QString &text)
{
    return hasLongWord(text) ? QTextOption::WrapAnywhere
                             : QTextOption::WrapAtWordBoundaryOrAnywhere;
}

WrappedText::WrappedText(const QString &text, const QFont &font)
    : m_layout(withSeparators(text), font)
{
    QTextOption option;
    option.setWrapMode(wrapModeFor(text));
    m_layout.setTextOption(option);
    m_layout.setCacheEnabled(true);
}

int WrappedText::heightFor(int width)
{
    if (width == m_width)
        return m_height;
    m_width = width;
    double height = 0;
    m_layout.beginLayout();
    for (QTextLine line = m_layout.createLine(); line.isValid(); line = m_layout.createLine()) {
        line.setLineWidth(std::max(width, 1));
        line.setPosition({0, height});
        height += line.height();
    }
    m_layout.endLayout();
    m_height = int(std::ceil(height));
    return m_height;
}

void WrappedText::draw(QPainter &painter, const QPointF &topLeft, int width)
{
    if (heightFor(width) > 0)
        m_layout.draw(&painter, topLeft);
}

} // namespace tirlo
