#pragma once

#include <QPointF>
#include <QString>
#include <QTextLayout>

class QFont;
class QPainter;

namespace tirlo {

/// How the text is best broken into lines: between words, and within a word longer than a line.
///
/// Looking for the best place in a word without end takes as long as the word squared, so a text
/// with one breaks anywhere.
[[nodiscard]] QTextOption::WrapMode wrapModeFor(const QString &text);

/// A text over as many lines as it takes, of which nothing is left out; lengths in points.
///
/// It is laid out once for a width.
class WrappedText
{
public:
    WrappedText(const QString &text, const QFont &font);

    [[nodiscard]] int heightFor(int width);

    /// Draws the lines from there on with the painter's pen.
    void draw(QPainter &painter, const QPointF &topLeft, int width);

private:
    QTextLayout m_layout;
    int m_width = -1;
    int m_height = 0;
};

} // namespace tirlo
