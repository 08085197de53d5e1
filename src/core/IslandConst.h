#pragma once

#include "model/ViewLayout.h"

/// The island's fixed numbers; lengths in points.
namespace tirlo::IslandConst {

// The panel never moves or resizes; the island is drawn inside it.
inline constexpr int panelWidth = 720;
inline constexpr int panelHeight = 320;

inline constexpr double expandedWidth = 640;
/// Extra width of a compact island over the notch.
inline constexpr double compactExtraWidth = 160;
inline constexpr double expandedCornerRadius = 22;
inline constexpr double closedCornerRadius = 14;
inline constexpr double topRadius = 0;

// The height of the prompt's card grows with the chat.
inline constexpr double promptBaseHeight = 240;
inline constexpr double promptHeightPerMessage = 40;
inline constexpr double promptMaximumHeight = 300;

/// How much higher than usual the card of a long request or question gets at most.
inline constexpr double mostCardGrowth = 148;

// The notch where the screen does not tell.
inline constexpr double unknownNotchWidth = 184;
inline constexpr double plainScreenNotchWidth = 80;
inline constexpr double plainScreenMaximumNotchHeight = 24;

/// The geometry of the card.
[[nodiscard]] const ViewLayout &viewLayout(IslandView view);

} // namespace tirlo::IslandConst
