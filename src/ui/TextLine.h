#pragma once

#include <QString>

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
/// Line breaks show as "⏎", other control characters and the marks that reorder text invisibly as
/// "�", so that what is read is what is there. Of a very long text only both ends remain.
[[nodiscard]] QString displayable(const QString &text);

/// What of the line fits the width, with "…" in place of the rest; its direction is the text's own.
[[nodiscard]] QString elided(const QString &line, const QFontMetricsF &metrics,
                             Qt::TextElideMode mode, double width);

/// Draws the line from the left edge of the rectangle with its capitals centred vertically.
///
/// Uses the painter's font and pen; the line must fit already.
void draw(QPainter &painter, const QRectF &rect, const QString &line);

/// Shows the whole text as a tool tip at a global position; a very long text is cut.
void showToolTip(const QPoint &position, const QString &text, QWidget *owner);

} // namespace tirlo::TextLine
