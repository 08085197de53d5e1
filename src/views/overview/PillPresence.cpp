#include "PillPresence.h"

#include "AgentPill.h"
#include "island/IslandMotion.h"
#include "ui/motion/FrameClock.h"

#include <algorithm>

namespace tirlo {

namespace {

constexpr double goneScale = 0.85;
constexpr double fadeSeconds = 0.14;

} // namespace

PillPresence::PillPresence(AgentPill &pill)
    : m_pill(&pill)
    , m_opacity(0)
    , m_scale(goneScale)
{
    m_pill->hide();
}

void PillPresence::comeTo(const QRect &capsule, bool moves, const FrameClock &clock)
{
    const double now = clock.now();
    const auto permitted = [&](const Animation &animation) {
        return moves ? clock.permitted(animation) : Animation::none();
    };
    // What wasn't there at all has nowhere to come from.
    if (m_opacity.valueAt(now) <= 0)
        m_corner.jumpTo(capsule.topLeft());
    m_corner.animateTo(capsule.topLeft(), permitted(IslandMotion::openSpring), now);
    m_opacity.animateTo(1, permitted({TimingCurve::easeOut(2 * fadeSeconds), fadeSeconds}), now);
    m_scale.animateTo(1, permitted({IslandMotion::openSpring, fadeSeconds}), now);
    m_width = capsule.width();
    m_pill->setAttribute(Qt::WA_TransparentForMouseEvents, false);
    m_pill->setFocusPolicy(Qt::TabFocus);
    showAt(now);
}

void PillPresence::leave(bool moves, const FrameClock &clock)
{
    const double now = clock.now();
    const Animation fade
        = moves ? clock.permitted(TimingCurve::easeIn(fadeSeconds)) : Animation::none();
    m_opacity.animateTo(0, fade, now);
    m_scale.animateTo(goneScale, fade, now);
    m_pill->setAttribute(Qt::WA_TransparentForMouseEvents);
    m_pill->setFocusPolicy(Qt::NoFocus);
    showAt(now);
}

bool PillPresence::showAt(double time)
{
    const bool isAtRest
        = m_opacity.isAtRest(time) && m_scale.isAtRest(time) && m_corner.isAtRest(time);
    const double opacity = m_opacity.valueAt(time);
    const QPoint corner = m_corner.valueAt(time).toPoint();
    m_pill->setGeometry(AgentPill::frameAround({corner, QSize(m_width, AgentPill::capsuleHeight)}));
    m_pill->setPresence(opacity, m_scale.valueAt(time));
    m_pill->setVisible(!isLeaving() || opacity > 0);
    return isAtRest;
}

} // namespace tirlo
