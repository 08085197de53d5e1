#pragma once

#include "core/model/BotState.h"

#include <QColor>

namespace tirlo {

/// The opaque colour that stands for what an agent is doing, as in the mascot's glow.
[[nodiscard]] QColor stateColor(BotState state);

} // namespace tirlo
