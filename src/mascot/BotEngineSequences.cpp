#include "BotEngine.h"

#include <algorithm>
#include <numbers>

// What the mascot does once, on request, and the little routines of a mini.

namespace tirlo {

namespace {

using Type = Particle::ParticleType;

constexpr double slapMemory = 1.7;
constexpr std::size_t slapsToDizzy = 3;
constexpr double annoyedFor = 0.8;
constexpr double annoyedSoundDelay = 0.06;
/// Members of a burst are born this far apart, in seconds.
constexpr double burstSpacing = 0.14;

constexpr TweenKeys blinkKeys{{0.06, 70, easeInOutCubic}, {1, 130, easeOutCubic}};

} // namespace

void BotEngine::emitParticles(Particle::ParticleType type, int count)
{
    // A snore leaves at the side of the head, the rest rises around its middle.
    const bool aside = type == Type::z;
    for (int i = 0; i < count; ++i) {
        Particle particle;
        particle.type = type;
        particle.x = (m_random() - 0.5) * 0.9 + (aside ? 0.55 : 0);
        particle.y = uniform(-0.9, -0.7);
        particle.vx = (m_random() - 0.5) * 0.35 + (aside ? 0.18 : 0);
        particle.vy = uniform(-0.8, -0.45);
        particle.life = 1.3 + 0.5 * m_random();
        particle.rot = 2 * std::numbers::pi * m_random();
        particle.size = 0.15 + 0.08 * m_random();
        particle.age = -burstSpacing * i;
        particles.push_back(particle);
    }
}

void BotEngine::blink()
{
    if (!isLocked(BotProperty::open))
        startTween(BotProperty::open, blinkKeys);
}

void BotEngine::squash()
{
    startTween(BotProperty::sy,
               {{0.78, 70, easeOutCubic}, {1.1, 130, easeOutCubic}, {1, 170, easeInOutCubic}});
    startTween(BotProperty::sx,
               {{1.16, 70, easeOutCubic}, {0.95, 130, easeOutCubic}, {1, 170, easeInOutCubic}});
}

void BotEngine::slap()
{
    interruptGreet();
    if (state == BotState::dizzy)
        return;

    const double now = m_queue.mediaTime();
    std::erase_if(slapTimes, [now](double time) { return now - time >= slapMemory; });
    slapTimes.push_back(now);
    playSound("slap");
    squash();

    if (slapTimes.size() >= slapsToDizzy) {
        slapTimes.clear();
        if (m_hooks.becameDizzy)
            m_hooks.becameDizzy();
        return;
    }
    overrideEye(EyeShape::line, now + annoyedFor);
    later(annoyedSoundDelay, [this] { playSound("annoyed"); });
}

void BotEngine::gulp()
{
    slotHTarget = 0.42;
    later(0.46, [this] {
        slotHTarget = 0;
        isChewing = true;
        later(0.8, [this] { isChewing = false; });
    });
    startTween(BotProperty::sy,
               {{0.78, 80, easeOutCubic}, {1.18, 130, easeOutCubic}, {1, 220, easeOutBack}});
    startTween(BotProperty::sx,
               {{1.28, 80, easeOutCubic}, {0.92, 130, easeOutCubic}, {1, 220, easeOutBack}});
    blink();
}

void BotEngine::laterInGreeting(double seconds, std::function<void()> step)
{
    later(seconds, [this, token = greetToken, step = std::move(step)] {
        if (greetToken == token)
            step();
    });
}

void BotEngine::greet()
{
    const double now = m_queue.mediaTime();
    ++greetToken;
    waveStart = now + 0.45;
    waveUntil = now + 1.55;
    overrideEye(EyeShape::happy, now + 2);
    startTween(BotProperty::oy, {{-0.06, 220, easeOutCubic}, {0, 220, easeOutBack}});

    laterInGreeting(0.25, [this] {
        startTween(BotProperty::hands, {{1, 280, easeOutCubic}});
        startTween(BotProperty::sy, {{0.95, 100, easeOutCubic}, {1, 260, easeOutBack}});
        startTween(BotProperty::sx, {{1.04, 100, easeOutCubic}, {1, 260, easeOutBack}});
        playSound("greet");
    });
    laterInGreeting(0.55, [this] { blink(); });
    laterInGreeting(1.5, [this] { blink(); });
    laterInGreeting(1.55, [this] {
        waveUntil = 0;
        startTween(BotProperty::hands, {{0, 200, easeInOutCubic}});
    });
    laterInGreeting(1.75, [this] { overrideEye(EyeShape::happy, m_queue.mediaTime() + 0.3); });
}

void BotEngine::interruptGreet()
{
    if (hands <= 0.01 && m_queue.mediaTime() >= waveUntil)
        return;
    ++greetToken;
    waveUntil = 0;
    waveStart = 0;
    startTween(BotProperty::hands, {{0, 150, easeInOutCubic}});
}

void BotEngine::triggerEmote(BotEmote emote, double duration)
{
    const double now = m_queue.mediaTime();
    const double until = now + duration;
    // A leg that holds for what the legs around it leave of the duration.
    const auto hold = [duration](double target, double others) {
        return TweenKey{target, (duration - others) * 1000, linearEase};
    };

    switch (emote) {
    case BotEmote::love:
        overrideEye(EyeShape::heart, until);
        startTween(BotProperty::blush,
                   {{1, 300, easeOutCubic}, hold(1, 0.6), {0, 300, easeInOutCubic}});
        emitParticles(Type::heart, 4);
        startTween(BotProperty::oy, {{-0.1, 160, easeOutCubic}, {0, 300, easeOutBack}});
        return;
    case BotEmote::surprised:
        overrideEye(EyeShape::dot, until);
        startTween(BotProperty::oy, {{-0.3, 140, easeOutCubic}, {0, 380, easeOutBack}});
        startTween(BotProperty::es, {{1.25, 120, easeOutCubic}, {1, 500, easeInOutCubic}});
        return;
    case BotEmote::proud:
        overrideEye(EyeShape::star, until);
        emitParticles(Type::star, 5);
        startTween(BotProperty::tilt,
                   {{-0.14, 220, easeOutCubic}, hold(-0.14, 0.5), {0, 280, easeInOutCubic}});
        startTween(BotProperty::blush,
                   {{0.7, 250, easeOutCubic}, hold(0.7, 0.5), {0, 300, easeInOutCubic}});
        return;
    case BotEmote::wink:
        overrideEye(EyeShape::wink, until);
        startTween(BotProperty::tilt,
                   {{0.12, 160, easeOutCubic}, hold(0.12, 0.4), {0, 240, easeInOutCubic}});
        return;
    case BotEmote::yawn:
        overrideEye(EyeShape::tired, until);
        startTween(BotProperty::sy, {{1.12, 500, easeInOutCubic}, {1, 500, easeInOutCubic}});
        startTween(BotProperty::sx, {{0.94, 500, easeInOutCubic}, {1, 500, easeInOutCubic}});
        later(0.7, [this] {
            eyeOverride = EyeShape::closed;
            emitParticles(Type::z, 2);
        });
        return;
    case BotEmote::happy:
        overrideEye(EyeShape::happy, until);
        startTween(BotProperty::blush, {{0.6, 200, easeOutCubic}, {0, 600, easeInOutCubic}});
        return;
    case BotEmote::annoyed:
        overrideEye(EyeShape::line, now + annoyedFor);
        later(annoyedSoundDelay, [this] { playSound("annoyed"); });
        return;
    }
}

void BotEngine::doMiniBehaviorLoop(double now)
{
    const auto next = [this, now](double wait, double spread) {
        miniNextBehavior = now + wait + uniform(0, spread);
    };

    if (permanentEmote == BotEmote::love) {
        emitParticles(Type::heart, 2);
        startTween(
            BotProperty::tilt,
            {{-0.1, 180, easeOutCubic}, {0.1, 340, easeInOutCubic}, {0, 220, easeInOutCubic}});
        return next(2.6, 1.5);
    }
    if (permanentEmote == BotEmote::wink) {
        overrideEye(EyeShape::wink, now + 0.55);
        startTween(BotProperty::tilt,
                   {{0.13, 100, easeOutCubic}, {0.13, 320, linearEase}, {0, 200, easeInOutCubic}});
        return next(2.2, 2);
    }
    if (permanentEmote == BotEmote::happy) {
        if (isLocked(BotProperty::oy)) {
            miniNextBehavior = now + 0.4;
            return;
        }
        startTween(BotProperty::oy,
                   {{-0.3, 120, easeOutCubic}, {0.03, 200, easeInOutCubic}, {0, 160, easeOutBack}});
        startTween(BotProperty::sy,
                   {{0.82, 80, easeOutCubic},
                    {1.18, 130, easeOutCubic},
                    {0.88, 160, easeInOutCubic},
                    {1, 200, easeOutBack}});
        startTween(BotProperty::sx,
                   {{1.15, 80, easeOutCubic},
                    {0.88, 130, easeOutCubic},
                    {1.06, 160, easeInOutCubic},
                    {1, 200, easeOutBack}});
        return next(2.2, 1.2);
    }
    if (permanentEmote == BotEmote::annoyed) {
        if (isLocked(BotProperty::yaw)) {
            miniNextBehavior = now + 0.5;
            return;
        }
        startTween(BotProperty::yaw,
                   {{-0.65, 50, easeOutCubic},
                    {0.65, 90, easeInOutCubic},
                    {-0.5, 80, easeInOutCubic},
                    {0.4, 75, easeInOutCubic},
                    {-0.2, 70, easeInOutCubic},
                    {0, 140, easeOutCubic}});
        return next(3, 2.5);
    }
    next(3, 2);
}

} // namespace tirlo
