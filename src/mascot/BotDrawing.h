#pragma once

#include <QPainter>
#include <QSizeF>

namespace tirlo {

class BotEngine;

// The mascot's picture as functions of its engine and the canvas size, which is taken from the
// painter's origin. A frame of the big mascot is drawn by drawHandsBehind(), draw() and
// drawHandsAndExtras() in this order; a mini's by draw() alone. Each leaves the painter as it was.

/// Draws the body with cheeks, eyes and slot.
void draw(QPainter &painter, const BotEngine &engine, QSizeF size);

/// Draws the two hands, whose roots the body hides; nothing on a mini or a tiny canvas.
void drawHandsBehind(QPainter &painter, const BotEngine &engine, QSizeF size);

/// Draws the badge and the particles.
void drawHandsAndExtras(QPainter &painter, const BotEngine &engine, QSizeF size);

} // namespace tirlo
