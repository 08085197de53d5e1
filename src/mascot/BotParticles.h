#pragma once

#include <QPainter>

namespace tirlo {

class BotEngine;
struct BotFrame;

/// Draws the engine's born particles on the canvas.
void drawParticles(QPainter &painter, const BotEngine &engine, const BotFrame &frame);

} // namespace tirlo
