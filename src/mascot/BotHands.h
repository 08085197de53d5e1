#pragma once

#include <QPainter>

namespace tirlo {

class BotEngine;
struct BotFrame;

/// Draws both hands at rest beside the body, or the right one waving, on the canvas.
void drawHands(QPainter &painter, const BotEngine &engine, const BotFrame &frame);

} // namespace tirlo
