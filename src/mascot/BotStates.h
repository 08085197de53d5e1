#pragma once

#include "BotColor.h"
#include "core/model/BotState.h"

#include <QPointF>

#include <optional>

namespace tirlo {

/// The small sign beside the mascot's head, with its colour.
struct BadgeType
{
    enum class Kind { dots, bang, question, dot };

    Kind kind = Kind::dot;
    BotColor color;

    bool operator==(const BadgeType &) const = default;
};

/// How the mascot looks and carries itself in one state.
struct BotStateCfg
{
    BotColor color;
    /// Strength of the colour over the grey body.
    double tint = 0;
    EyeShape eye = EyeShape::pill;
    std::optional<BadgeType> badge;
    bool bounces = false;
    /// The gaze sweeps from side to side.
    bool scans = false;
    bool breathes = false;
    /// Snores.
    bool zz = false;
    bool sweat = false;
    /// A direction it looks in, whatever the pointer does; x to the right, y upward.
    std::optional<QPointF> look;
    /// Radians.
    double tilt = 0;
};

/// The table of all states.
namespace BotStates {

/// The row of a state.
[[nodiscard]] const BotStateCfg &row(BotState state);

} // namespace BotStates

} // namespace tirlo
