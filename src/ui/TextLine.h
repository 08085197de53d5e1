#pragma once

#include <QGlyphRun>
#include <QString>

class QFont;
class QFontMetricsF;
class QPainter;
class QPoint;
class QRectF;
class QWidget;

/// One line of foreign text: agents, projects and commands may hold anything.
///
/// Nothing here interprets markup.
namespace tirlo::TextLine {

/// The text fit for one line, and short enough to be laid out in no time.
///
/// Line breaks show as "⏎", other control characters and hidden marks as "�", so that what is read
/// is what is there. Of a very long text only both ends remain.
[[nodiscard]] QString displayable(const QString &text);

/// What of the line fits the width, with "…" in place of the rest; its direction is the text's own.
[[nodiscard]] QString elided(const QString &line, const QFontMetricsF &metrics,
                             Qt::TextElideMode mode, double width);

/// A line laid out once, to be drawn again and again.
struct Shaped
{
    /// From the line's left end on its baseline.
    QList<QGlyphRun> glyphs;
    /// In points, like the height of a capital.
    double width = 0;
    double capHeight = 0;
};

/// What of the line fits the width, laid out in the font.
///
/// The last few dozen are kept, since laying out costs more than drawing; the reference holds until
/// the next call. Main thread only.
[[nodiscard]] const Shaped &fitted(const QString &line, const QFont &font, Qt::TextElideMode mode,
                                   double width);

/// Draws the line from the left edge of the rectangle with its capitals centred vertically.
///
/// Uses the painter's pen.
void draw(QPainter &painter, const QRectF &rect, const Shaped &line);

/// The same with the painter's font; the line must fit already.
void draw(QPainter &painter, const QRectF &rect, const QString &line);

/// Shows the whole text, without hidden marks, as a tool tip at a global position; of a very long
/// one both ends.
void showToolTip(const QPoint &position, const QString &text, QWidget *owner);

} // namespace tirlo::TextLine
