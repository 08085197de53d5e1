#include "BotPictureKey.h"

#include "BotEngine.h"
#include "BotEyes.h"

#include <cmath>

namespace tirlo {

namespace {

/// Steps a body radius, or a radian, or a whole blend: a few hundredths of a pixel.
constexpr double stepsPerUnit = 1024;

std::int32_t steps(double value)
{
    return std::int32_t(std::lround(value * stepsPerUnit));
}

/// True when the picture moves by the clock alone.
bool movesByClock(const BotEngine &engine, EyeShape eye)
{
    return !engine.particles.empty() || engine.lastTime < engine.waveUntil
        || eye == EyeShape::spiral || eye == EyeShape::star
        || (engine.badge && engine.badge->kind == BadgeType::Kind::dots);
}

/// Names a colour, or its absence.
std::int32_t code(const std::optional<BotColor> &color)
{
    return color ? std::int32_t(color->paint().rgb() & 0xffffff) : -1;
}

} // namespace

BotPictureKey pictureKey(const BotEngine &engine)
{
    const EyeShape eye = eyeOnShow(engine);
    const auto badgeColor = engine.badge ? std::optional(engine.badge->color) : std::nullopt;
    return {
        steps(engine.yaw),
        steps(engine.pitch),
        steps(engine.roll),
        steps(engine.tilt),
        steps(engine.open),
        steps(engine.sx),
        steps(engine.sy),
        steps(engine.oy),
        steps(engine.ox),
        steps(engine.tint),
        steps(engine.morph),
        steps(engine.hands),
        steps(engine.blush),
        steps(engine.es),
        steps(engine.badgeS),
        steps(engine.slotH),
        steps(engine.particleOverhang),
        steps(engine.col[0]),
        steps(engine.col[1]),
        steps(engine.col[2]),
        std::int32_t(eye),
        engine.badge ? std::int32_t(engine.badge->kind) : -1,
        code(badgeColor),
        code(engine.bodyColor),
        movesByClock(engine, eye) ? steps(std::fmod(engine.lastTime, 4096)) : -1,
        std::int32_t(engine.particles.size()),
        std::int32_t(engine.isMini),
    };
}

} // namespace tirlo
