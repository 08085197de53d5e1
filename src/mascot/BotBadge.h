#pragma once

#include <QPainter>

namespace tirlo {

class BotEngine;
struct BotFrame;

/// Draws the engine's badge at the upper left of the head, on the canvas.
void drawBadge(QPainter &painter, const BotEngine &engine, const BotFrame &frame);

} // namespace tirlo
