#pragma once

#include "ui/motion/Animated.h"

#include <QRect>

namespace tirlo {

class AgentPill;
class FrameClock;

/// Where one pill stands and how much of it is there, while pills swap places.
///
/// The one that goes fades first; the one that comes follows on a spring. One that goes no longer
/// takes the pointer or the keyboard.
class PillPresence
{
public:
    /// The pill is not there at first; it outlives this object.
    explicit PillPresence(AgentPill &pill);

    /// Lets the pill come, or go on, to the capsule; `moves` is false for what nobody sees.
    void comeTo(const QRect &capsule, bool moves, const FrameClock &clock);

    /// Lets the pill go.
    void leave(bool moves, const FrameClock &clock);

    /// Shows the pill as it is at that time; true once it has arrived or is gone.
    bool showAt(double time);

    [[nodiscard]] bool isLeaving() const { return m_opacity.target() == 0; }

    [[nodiscard]] AgentPill &pill() const { return *m_pill; }

private:
    AgentPill *m_pill;
    Animated<double> m_opacity;
    Animated<double> m_scale;
    /// The capsule's top-left corner, and its width.
    Animated<QPointF> m_corner;
    int m_width = 0;
};

} // namespace tirlo
