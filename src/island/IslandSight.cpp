#include "IslandSight.h"

#include "core/AppState.h"

namespace tirlo::IslandSight {

bool mayBeDrawn(const AppState &state)
{
    if (state.isLocked)
        return false;
    if (!state.isScreenFull)
        return true;
    return state.requestsOverFullscreen && state.mode == IslandMode::expanded
        && asksTheUser(state.view);
}

} // namespace tirlo::IslandSight
