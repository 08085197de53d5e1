#pragma once

#include "core/model/BotState.h"

#include <QPainter>

namespace tirlo {

class BotEngine;
struct BotFrame;

/// The eyes on show: those of the mood, but a box chews with happy eyes and peers at its open slot.
[[nodiscard]] EyeShape eyeOnShow(const BotEngine &engine);

/// Draws both eyes where the turn of the head puts them; the painter's origin is the body's
/// centre and it is clipped to the body.
void drawEyes(QPainter &painter, const BotEngine &engine, const BotFrame &frame);

/// Draws one eye of width `w` and height `h` around the origin; `sd` is -1 for the left, 1 for
/// the right one.
void drawEyeShape(QPainter &painter, const BotEngine &engine, EyeShape shape, double w, double h,
                  double sd);

} // namespace tirlo
