#include "BotEngine.h"

#include <numbers>

namespace tirlo {

namespace {

constexpr std::array<double BotEngine::*, botPropertyCount> propertyFields{
    &BotEngine::yaw,   &BotEngine::pitch, &BotEngine::roll,  &BotEngine::tilt, &BotEngine::open,
    &BotEngine::sx,    &BotEngine::sy,    &BotEngine::oy,    &BotEngine::ox,   &BotEngine::tint,
    &BotEngine::morph, &BotEngine::hands, &BotEngine::blush, &BotEngine::es,   &BotEngine::badgeS,
};

/// More particles than bursts and ambient ones ever pile up.
constexpr std::size_t usualParticles = 64;

QString keyOf(const std::optional<BadgeType> &badge)
{
    if (!badge)
        return QStringLiteral("none");
    static constexpr std::array prefixes{"dots-", "bang-", "q-", "dot-"};
    return QStringLiteral("%1%2.%3.%4")
        .arg(QLatin1String(prefixes[std::size_t(badge->kind)]))
        .arg(int(badge->color.red * 255))
        .arg(int(badge->color.green * 255))
        .arg(int(badge->color.blue * 255));
}

/// The standing eyes of an emote; a wink has none.
std::optional<EyeShape> permanentEyeOf(BotEmote emote)
{
    switch (emote) {
    case BotEmote::love:
        return EyeShape::heart;
    case BotEmote::surprised:
        return EyeShape::dot;
    case BotEmote::proud:
        return EyeShape::star;
    case BotEmote::wink:
        return std::nullopt;
    case BotEmote::yawn:
        return EyeShape::tired;
    case BotEmote::happy:
        return EyeShape::happy;
    case BotEmote::annoyed:
        return EyeShape::line;
    }
    return std::nullopt;
}

} // namespace

BotEngine::BotEngine(MainQueue &queue, UniformSource random, BotHooks hooks)
    : m_queue(queue)
    , m_random(std::move(random))
    , m_hooks(std::move(hooks))
{
    lastTime = m_queue.mediaTime();
    t0 = m_queue.mediaTime() - uniform(0, 5);
    nextBlink = m_queue.mediaTime() + 1.5 + uniform(0, 2);
    particles.reserve(usualParticles);
}

void BotEngine::setProperty(BotProperty property, double value)
{
    this->*propertyFields[std::size_t(property)] = value;
}

double BotEngine::getProperty(BotProperty property) const
{
    return this->*propertyFields[std::size_t(property)];
}

void BotEngine::startTween(BotProperty property, const TweenKeys &keys,
                           void (*onComplete)(BotEngine &))
{
    tweens.start({.property = property,
                  .keys = keys,
                  .from = getProperty(property),
                  .startTime = m_queue.mediaTime() * 1000,
                  .onComplete = onComplete});
}

void BotEngine::later(double seconds, std::function<void()> step)
{
    m_queue.after(seconds, &m_life, std::move(step));
}

void BotEngine::playSound(const char *name) const
{
    if (m_hooks.playSound)
        m_hooks.playSound(QLatin1String(name));
}

void BotEngine::overrideEye(EyeShape eye, double until)
{
    eyeOverride = eye;
    eyeOverrideUntil = until;
}

void BotEngine::setState(BotState newState, bool force)
{
    if (state == newState && !force)
        return;

    const BotState oldState = state;
    state = newState;
    cfg = BotStates::row(newState);
    colT = {cfg.color.red, cfg.color.green, cfg.color.blue};
    if (!isLocked(BotProperty::tint))
        tint = cfg.tint;
    if (!isLocked(BotProperty::tilt))
        tgTilt = cfg.tilt;
    setBadge(cfg.badge);
    enterState(oldState);
}

void BotEngine::enterState(BotState oldState)
{
    switch (state) {
    case BotState::approval:
        startTween(BotProperty::oy, {{-0.2, 150, easeOutCubic}, {0, 300, easeOutBack}});
        return;
    case BotState::error:
        startTween(BotProperty::ox,
                   {{0.08, 50, easeOutCubic},
                    {-0.08, 70, easeInOutCubic},
                    {0.05, 70, easeInOutCubic},
                    {0, 90, easeOutCubic}});
        return;
    case BotState::finished:
        doRoll(950, 1);
        later(0.5, [this] { emitParticles(Particle::ParticleType::spark, 5); });
        return;
    case BotState::ratelimit:
        emitParticles(Particle::ParticleType::sweat, 1);
        return;
    case BotState::dizzy:
        doRoll(1300, 2);
        return;
    case BotState::idle:
        if (oldState != BotState::idle)
            blink();
        return;
    case BotState::question:
    case BotState::working:
    case BotState::thinking:
    case BotState::searching:
    case BotState::sleeping:
        blink();
        return;
    }
}

void BotEngine::doRoll(double milliseconds, int turns)
{
    roll = 0;
    startTween(BotProperty::roll, {{2 * std::numbers::pi * turns, milliseconds, easeInOutCubic}},
               [](BotEngine &engine) { engine.roll = 0; });
}

void BotEngine::setBadge(const std::optional<BadgeType> &newBadge)
{
    const QString key = keyOf(newBadge);
    if (key == badgeKey)
        return;

    badgeKey = key;
    const int token = ++badgeToken;
    startTween(BotProperty::badgeS, {{0, 90, easeInOutCubic}});
    later(0.1, [this, token, newBadge] {
        if (badgeToken != token)
            return;
        badge = newBadge;
        if (badge)
            startTween(BotProperty::badgeS, {{1, 280, easeOutBack}});
    });
}

void BotEngine::setPermanentEmote(std::optional<BotEmote> emote)
{
    permanentEmote = emote;
    if (!emote) {
        permanentEye.reset();
        if (eyeOverrideUntil == forever) {
            eyeOverride.reset();
            eyeOverrideUntil = 0;
        }
    } else if (const auto eye = permanentEyeOf(*emote)) {
        permanentEye = eye;
        overrideEye(*eye, forever);
    }
    miniNextBehavior = m_queue.mediaTime() + uniform(0.8, 2.5);
}

} // namespace tirlo
