#include "MascotHover.h"

#include "core/AppState.h"
#include "core/Notifications.h"
#include "core/SoundEngine.h"

#include <QLineF>

namespace tirlo {

namespace {

constexpr double restingEyeScale = 1.0;
constexpr double hoveredEyeScale = 1.08;
/// Seconds that a hand rests on the mascot before it earns a heart.
constexpr double loveDelay = 1.9;
/// Seconds between two hearts.
constexpr double lovePause = 6;
/// A hand that moves further, in points, begins to rest anew.
constexpr double restRadius = 40;

} // namespace

MascotHover::MascotHover(AppState &state, Notifications &notifications, SoundEngine &sounds,
                         MainQueue &queue)
    : m_state(state)
    , m_notifications(notifications)
    , m_sounds(sounds)
    , m_queue(queue)
{
}

void MascotHover::update(bool isOver, QPointF pointer)
{
    if (!isOver) {
        if (m_hovering) {
            m_loveTimer.cancel();
            Q_EMIT m_notifications.botSetTgEs(restingEyeScale);
        }
        m_hovering = false;
        return;
    }

    if (!m_hovering)
        botHoverIn(pointer);
    m_hovering = true;
    if (QLineF(m_startPosition, pointer).length() > restRadius) {
        m_startPosition = pointer;
        scheduleLoveTimer();
    }
}

void MascotHover::cancel()
{
    m_loveTimer.cancel();
    m_hovering = false;
}

void MascotHover::botHoverIn(QPointF pointer)
{
    if (!isLoveDue())
        return;
    m_startPosition = pointer;
    Q_EMIT m_notifications.botBlink();
    Q_EMIT m_notifications.botSetTgEs(hoveredEyeScale);
    m_sounds.play(QStringLiteral("hover"));
    scheduleLoveTimer();
}

void MascotHover::scheduleLoveTimer()
{
    m_loveTimer.cancel();
    m_loveTimer = m_queue.after(loveDelay, this, [this] { love(); });
}

void MascotHover::love()
{
    if (!m_hovering || m_state.stateOverride.value() || !isLoveDue())
        return;
    m_lastLoveTime = m_queue.mediaTime();
    Q_EMIT m_notifications.triggerEmote(BotEmote::love);
    m_sounds.play(QStringLiteral("love"));
}

bool MascotHover::isLoveDue() const
{
    return m_queue.mediaTime() - m_lastLoveTime > lovePause;
}

} // namespace tirlo
