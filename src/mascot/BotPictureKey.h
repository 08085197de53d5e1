#pragma once

#include <array>
#include <cstdint>

namespace tirlo {

class BotEngine;

/// All that a mascot's picture depends on, in steps too small to see: while the key stays equal,
/// painting again would show the same.
using BotPictureKey = std::array<std::int32_t, 27>;

/// The key of the picture that the engine would draw now.
[[nodiscard]] BotPictureKey pictureKey(const BotEngine &engine);

} // namespace tirlo
