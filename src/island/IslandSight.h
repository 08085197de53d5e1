#pragma once

namespace tirlo {

class AppState;

/// What may be seen of the island at all.
namespace IslandSight {

/// False in a locked session, and over a full-screen window for all but what waits for an answer.
[[nodiscard]] bool mayBeDrawn(const AppState &state);

} // namespace IslandSight

} // namespace tirlo
