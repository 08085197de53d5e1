#include "Actor.h"

#include "mascot/BotDrawing.h"

#include <cmath>

namespace tirlo {

Actor::Actor(Kind kind, unsigned seed)
    : m_dice(seed)
    , m_engine(m_queue, [this] { return std::uniform_real_distribution<double>(0, 1)(m_dice); })
{
    m_engine.isMini = kind == Kind::mini;
}

void Actor::play(double seconds, const std::function<void(BotEngine &)> &afterFrame)
{
    const int frames = int(std::lround(seconds * 60));
    for (int i = 0; i < frames; ++i) {
        m_queue.advance(1.0 / 60);
        m_engine.update(BotEngine::frameStep);
        if (afterFrame)
            afterFrame(m_engine);
    }
}

void Actor::paint(QPainter &painter, QSizeF size) const
{
    if (m_engine.isMini)
        return draw(painter, m_engine, size);
    drawHandsBehind(painter, m_engine, size);
    draw(painter, m_engine, size);
    drawHandsAndExtras(painter, m_engine, size);
}

} // namespace tirlo
