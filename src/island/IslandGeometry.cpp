#include "IslandGeometry.h"

#include "core/AppState.h"
#include "core/IslandConst.h"
#include "core/IslandLayout.h"

#include <algorithm>

namespace tirlo::IslandGeometry {

namespace {

double notchWidthOf(const ScreenInfo &screen)
{
    if (!screen.auxiliaryTopLeftWidth || !screen.auxiliaryTopRightWidth)
        return IslandConst::unknownNotchWidth;
    const double candidate
        = screen.frame.width() - *screen.auxiliaryTopLeftWidth - *screen.auxiliaryTopRightWidth;
    const bool plausible = candidate > 0 && candidate < screen.frame.width();
    return plausible ? candidate : IslandConst::unknownNotchWidth;
}

} // namespace

std::optional<ScreenInfo> notchScreen(const Screens &screens)
{
    for (const ScreenInfo &screen : screens.all()) {
        if (screen.safeAreaTop > 0)
            return screen;
    }
    return std::nullopt;
}

std::optional<ScreenInfo> chosenScreen(const Screens &screens, IslandScreen choice,
                                       const std::optional<QPointF> &opener)
{
    if (choice == IslandScreen::pointer && opener) {
        for (const ScreenInfo &screen : screens.all()) {
            if (screen.frame.contains(*opener))
                return screen;
        }
    }
    const auto notched = notchScreen(screens);
    return notched ? notched : screens.main();
}

double hangingDepth(const ScreenInfo &screen, IslandPosition position, bool isScreenFull,
                    double usualPanel)
{
    if (isScreenFull)
        return 0;
    switch (position) {
    case IslandPosition::automatic:
        return screen.safeAreaTop > 0 ? 0 : screen.topPanel;
    case IslandPosition::screenEdge:
        return 0;
    case IslandPosition::belowPanel: {
        const double known = std::max(screen.topPanel, screen.safeAreaTop);
        return known > 0 ? known : usualPanel;
    }
    }
    return 0;
}

IslandScreenGeometry screenGeometry(const ScreenInfo &screen, double statusBarThickness)
{
    if (screen.safeAreaTop > 0)
        return {.notchWidth = notchWidthOf(screen),
                .notchHeight = screen.safeAreaTop,
                .hasNotch = true};

    double menuHeight = screen.visibleFrame.top() - screen.frame.top();
    if (menuHeight <= 0)
        menuHeight = statusBarThickness;
    return {.notchWidth = IslandConst::plainScreenNotchWidth,
            .notchHeight = std::min(menuHeight, IslandConst::plainScreenMaximumNotchHeight),
            .hasNotch = false};
}

IslandShape islandShape(IslandMode mode, const QSizeF &size)
{
    return {.width = size.width(),
            .height = size.height(),
            .cornerRadius = mode == IslandMode::expanded ? IslandConst::expandedCornerRadius
                                                         : IslandConst::closedCornerRadius,
            .topRadius = IslandConst::topRadius};
}

IslandShape islandShape(const AppState &state)
{
    return islandShape(state.mode, IslandLayout::islandSize(state));
}

bool isBotHit(QPointF inPanel, const AppState &state)
{
    const MascotPlace place = IslandLayout::mascotPlace(state);
    const double left = (IslandConst::panelWidth - IslandLayout::islandSize(state).width()) / 2;
    const QPointF offset = inPanel - place.centre - QPointF(left, 0);
    const double radius = place.diameter * IslandLayout::canvasPerDiameter / 2;
    return radius > 0 && QPointF::dotProduct(offset, offset) <= radius * radius;
}

} // namespace tirlo::IslandGeometry
