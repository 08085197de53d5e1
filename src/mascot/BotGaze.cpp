#include "BotGaze.h"

#include "core/AppState.h"
#include "core/IslandConst.h"
#include "platform/Screens.h"

#include <algorithm>
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

double islandWidth(const AppState &state)
{
    switch (state.mode.value()) {
    case IslandMode::hidden:
        return state.notchWidth;
    case IslandMode::compact:
        return state.notchWidth + IslandConst::compactExtraWidth;
    case IslandMode::expanded:
        break;
    }
    return IslandConst::expandedWidth;
}

double islandHeight(const AppState &state, const ViewLayout &layout)
{
    if (state.mode != IslandMode::expanded)
        return state.notchHeight;
    if (state.view != IslandView::prompt)
        return layout.height;
    return std::min(IslandConst::promptMaximumHeight,
                    IslandConst::promptBaseHeight
                        + IslandConst::promptHeightPerMessage
                            * double(state.chatHistory.value().size()));
}

/// Left of the island is 0.
double mascotX(const AppState &state, const ViewLayout &layout)
{
    switch (state.mode.value()) {
    case IslandMode::hidden:
        return 46;
    case IslandMode::compact:
        return 40;
    case IslandMode::expanded:
        break;
    }
    if (state.view == IslandView::uploading)
        return state.uploadProgress * 526 + 36;
    return layout.botX;
}

/// Top of the island is 0.
double mascotY(const AppState &state, const ViewLayout &layout)
{
    const double height = islandHeight(state, layout);
    switch (state.mode.value()) {
    case IslandMode::hidden:
        return 16;
    case IslandMode::compact:
        return height / 2;
    case IslandMode::expanded:
        break;
    }
    if (layout.botY)
        return *layout.botY;
    if (state.view == IslandView::uploading)
        return 103;
    return (height - 42 - 84) / 2 + 84;
}

} // namespace

QPointF gazeAtPointer(const AppState &state, const Screens &screens)
{
    const ViewLayout &layout = IslandConst::viewLayout(state.view);
    const double x = mascotX(state, layout) + middleOfScreen(screens) - islandWidth(state) / 2;
    const double y = mascotY(state, layout);
    return {std::tanh((state.mousePosition.x() - x) / reachX),
            -std::tanh((state.mousePosition.y() - y) / reachY)};
}

} // namespace tirlo
