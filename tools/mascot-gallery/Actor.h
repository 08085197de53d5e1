#pragma once

#include "mascot/BotEngine.h"
#include "support/ManualQueue.h"

#include <QPainter>

#include <functional>
#include <random>

namespace tirlo {

/// A mascot that plays its part in manual time, the same on every run with the same seed.
class Actor
{
public:
    enum class Kind { big, mini };

    explicit Actor(Kind kind = Kind::big, unsigned seed = 20);

    BotEngine &engine() { return m_engine; }

    /// Lets time pass, frame by frame at 60 a second; `afterFrame` plays the canvas's part.
    void play(double seconds, const std::function<void(BotEngine &)> &afterFrame = {});

    /// Draws the present frame as the canvas of its kind does, at the painter's origin.
    void paint(QPainter &painter, QSizeF size) const;

private:
    ManualQueue m_queue;
    std::mt19937 m_dice;
    BotEngine m_engine;
};

} // namespace tirlo
