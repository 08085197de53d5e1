#pragma once

#include <QFont>
#include <QPainter>

namespace tirlo {

/// Draws one character of the program's font with its ink centred on a point; `size` is the
/// font's size in points of the canvas, of any fraction.
void drawGlyph(QPainter &painter, QChar character, QFont::Weight weight, QPointF center,
               double size, const QColor &color);

} // namespace tirlo
