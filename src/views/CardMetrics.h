#pragma once

#include "core/IslandConst.h"

/// Where things stand in a card; lengths in points, relative to the card.
namespace tirlo::CardMetrics {

/// Height of every card that does not fill the island.
inline constexpr int height = 98;
/// Distance of a card to the island's sides and lower edge.
inline constexpr int margin = 10;
/// Width of every card on an open island.
inline constexpr int width = int(IslandConst::expandedWidth) - 2 * margin;
/// Height of a card that has grown as far as the island does.
inline constexpr int largestHeight = height + int(IslandConst::mostCardGrowth);
/// The least room above and below a card's column.
inline constexpr int padding = 7;

/// Left edge of a card's text, right of the mascot.
inline constexpr int contentLeft = 108;
inline constexpr int emptyContentLeft = 118;
inline constexpr int noteContentLeft = 98;
/// Distance of the text to the card's right edge.
inline constexpr int contentRight = 18;

} // namespace tirlo::CardMetrics
