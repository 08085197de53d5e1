#pragma once

/// Where things stand in a card; lengths in points, relative to the card.
namespace tirlo::CardMetrics {

/// Height of every card that does not fill the island.
inline constexpr int height = 98;
/// Distance of a card to the island's sides and lower edge.
inline constexpr int margin = 10;

/// Left edge of a card's text, right of the mascot.
inline constexpr int contentLeft = 108;
inline constexpr int emptyContentLeft = 118;
inline constexpr int noteContentLeft = 98;
/// Distance of the text to the card's right edge.
inline constexpr int contentRight = 18;

} // namespace tirlo::CardMetrics
