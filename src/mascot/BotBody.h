#pragma once

#include <QPainter>
#include <QPainterPath>

namespace tirlo {

class BotEngine;
class ShapeLayers;
struct BotFrame;

// The painter's origin is the body's centre.

/// Fills the body: one flat colour, or grey under the state's tint, a shaded rim and a highlight.
void drawBody(QPainter &painter, const BotEngine &engine, const QPainterPath &path,
              const BotFrame &frame);

/// Rounds a filled body off: a shaded rim and a highlight.
void addShading(ShapeLayers &layers, const BotFrame &frame);

/// Draws the blush, which slides with the head; the painter is clipped to the body.
void drawCheeks(QPainter &painter, const BotEngine &engine, const BotFrame &frame);

/// Draws the slot of the box form; the painter is clipped to the body.
void drawSlot(QPainter &painter, const BotEngine &engine, const BotFrame &frame);

} // namespace tirlo
