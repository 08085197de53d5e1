#include "BotGaze.h"

#include "core/AppState.h"
#include "core/IslandLayout.h"
#include "platform/Screens.h"

#include <cmath>

namespace tirlo {

namespace {

/// Pointer distances in points over which the gaze turns most.
constexpr double reachX = 260;
constexpr double reachY = 200;

/// Centre of the main screen, or else of the first one.
double middleOfScreen(const Screens &screens)
{
    if (const auto main = screens.main())
        return main->frame.center().x();
    const auto all = screens.all();
    return all.empty() ? 0 : all.front().frame.center().x();
}

} // namespace

QPointF gazeAtPointer(const AppState &state, const Screens &screens)
{
    const double left = middleOfScreen(screens) - IslandLayout::islandSize(state).width() / 2;
    const QPointF eyes = IslandLayout::mascotPlace(state).centre + QPointF(left, 0);
    const QPointF away = state.mousePosition - eyes;
    return {std::tanh(away.x() / reachX), -std::tanh(away.y() / reachY)};
}

} // namespace tirlo
