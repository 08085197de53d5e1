#include "BotEngine.h"

#include <algorithm>
#include <cmath>
#include <numbers>

// One frame of the mascot: what it should be doing now, and its pose easing toward that.

namespace tirlo {

namespace {

// What is left of a distance after a second of smoothing; each a matter of how heavy the part is.
constexpr double headRemainder = 0.0025;
constexpr double bodyRemainder = 0.0008;
constexpr double colorRemainder = 0.002;

// The slot's spring: 8 pi a second, damped at 0.6.
constexpr double slotStiffness = 631.6546816697189;
constexpr double slotDamping = 30.159289474462014;
/// Longer steps than this make a spring this stiff swing higher each time.
constexpr double longestSlotStep = 1.0 / 60;

constexpr double swayPerSecond = 1.2 * 2 * std::numbers::pi;

constexpr double ambientPeriod = 1.3;
constexpr double doubleBlinkChance = 0.22;
constexpr double doubleBlinkDelay = 0.23;

void approach(double &value, double target, double factor)
{
    value += (target - value) * factor;
}

} // namespace

void BotEngine::update(double dt)
{
    const double now = m_queue.mediaTime();
    const double t = now - t0;

    stepTweens(now * 1000);
    aim(now, t);
    bounce(dt, t);
    breathe(t);
    if (isMini && miniNextBehavior < now)
        doMiniBehaviorLoop(now);
    smooth(dt);
    runBlinkClock(now);
    expireEyeOverride(now);
    tickAmbient(now);
    ageParticles(dt);
    stepSlotSpring(dt);
    lastTime = now;
}

void BotEngine::stepTweens(double nowMs)
{
    for (std::size_t i = 0; i < botPropertyCount; ++i) {
        if (auto &tween = tweens.slot(BotProperty(i)))
            stepTween(tween, nowMs);
    }
}

void BotEngine::stepTween(std::optional<Tween> &tween, double nowMs)
{
    const TweenKey &key = tween->keys[tween->keyIndex];
    const double p = tween->progress(nowMs);
    setProperty(tween->property, tween->from + (key.target - tween->from) * key.ease(p));
    if (p < 1)
        return;

    tween->from = key.target;
    tween->startTime = nowMs;
    if (++tween->keyIndex < tween->keys.size())
        return;

    const auto onComplete = tween->onComplete;
    tween.reset();
    if (onComplete)
        onComplete(*this);
}

void BotEngine::aim(double now, double t)
{
    const QPointF target = gaze(now, t);
    tgYaw = target.x();
    tgPitch = target.y();

    tgTilt = cfg.tilt;
    if (waveStart < now && now < waveUntil)
        tgTilt = 0.07 * std::sin(swayPerSecond * (now - waveStart)) - 0.06;
}

QPointF BotEngine::gaze(double now, double t)
{
    if (state == BotState::sleeping)
        return {0, -0.14};

    QPointF target(lookX * 0.62, lookY * 0.5);
    if (cfg.look)
        target = {target.x() * 0.35 + cfg.look->x() * 0.55, target.y() * 0.3 + cfg.look->y() * 0.5};
    if (cfg.scans)
        target = {0.6 * std::sin(2.6 * t), -0.06};
    if (state == BotState::dizzy)
        target.setX(0.25 * std::sin(9 * t));

    if (!isMini || cfg.scans || cfg.look || state == BotState::dizzy)
        return target;

    if (miniLookNextTime < now) {
        miniLookTarget.setX(uniform(-0.88, 0.88));
        miniLookTarget.setY(uniform(-0.55, 0.45));
        miniLookNextTime = now + uniform(0.5, 2);
    }
    return {miniLookTarget.x() * 0.62, miniLookTarget.y() * 0.5};
}

void BotEngine::bounce(double dt, double t)
{
    if (isLocked(BotProperty::oy))
        return;
    const double target = cfg.bounces ? -0.07 * std::abs(std::sin(5.2 * t)) : 0;
    approach(oy, target, 1 - std::pow(bodyRemainder, dt));
}

void BotEngine::breathe(double t)
{
    tgSx = 1;
    tgSy = 1;
    if (cfg.breathes) {
        const double breath = std::sin(1.8 * t) * (isMini ? 0.07 : 0.035);
        tgSy += breath;
        tgSx -= 0.57 * breath;
    } else if (isMini) {
        const double breath = std::sin(2.2 * t);
        tgSy += 0.04 * breath;
        tgSx -= 0.02 * breath;
    }
}

void BotEngine::smooth(double dt)
{
    const double head = 1 - std::pow(headRemainder, dt);
    const double body = 1 - std::pow(bodyRemainder, dt);
    const auto ease = [this](BotProperty property, double &value, double target, double factor) {
        if (!isLocked(property))
            approach(value, target, factor);
    };

    ease(BotProperty::yaw, yaw, tgYaw, head);
    ease(BotProperty::pitch, pitch, tgPitch, head);
    ease(BotProperty::tilt, tilt, tgTilt, body);
    ease(BotProperty::sy, sy, tgSy, body);
    ease(BotProperty::sx, sx, tgSx, body);
    ease(BotProperty::es, es, tgEs, body);

    const double hue = 1 - std::pow(colorRemainder, dt);
    for (std::size_t i = 0; i < col.size(); ++i)
        approach(col[i], colT[i], hue);
}

void BotEngine::runBlinkClock(double now)
{
    if (secondBlink && *secondBlink <= now) {
        secondBlink.reset();
        blink();
    }
    if (nextBlink >= now)
        return;

    if (state != BotState::sleeping && state != BotState::dizzy) {
        blink();
        if (m_random() < doubleBlinkChance)
            secondBlink = now + doubleBlinkDelay;
    }
    nextBlink = now + 2.2 + uniform(0, 3.2);
}

void BotEngine::expireEyeOverride(double now)
{
    if (!eyeOverride || eyeOverrideUntil >= now)
        return;
    eyeOverride = permanentEye;
    if (permanentEye)
        eyeOverrideUntil = forever;
}

void BotEngine::tickAmbient(double now)
{
    if (now - lastAmbient <= ambientPeriod)
        return;
    lastAmbient = now;
    if (cfg.zz)
        emitParticles(Particle::ParticleType::z, 1);
    if (!isMini && cfg.sweat && m_random() < 0.5)
        emitParticles(Particle::ParticleType::sweat, 1);
}

void BotEngine::ageParticles(double dt)
{
    for (Particle &particle : particles)
        particle.age += dt;
    std::erase_if(particles,
                  [](const Particle &particle) { return particle.life <= particle.age; });
}

void BotEngine::stepSlotSpring(double dt)
{
    const int parts = std::max(1, int(std::ceil(dt / longestSlotStep - 1e-9)));
    const double step = dt / parts;
    for (int i = 0; i < parts; ++i) {
        slotHVel += step * ((slotHTarget - slotH) * slotStiffness - slotHVel * slotDamping);
        slotH = std::max(0.0, slotH + step * slotHVel);
    }
}

} // namespace tirlo
