#include "IslandGeometry.h"

#include "core/AppState.h"
#include "core/IslandConst.h"

#include <algorithm>

namespace tirlo::IslandGeometry {

namespace {

// A closed island's mascot keeps this distance to the edges, up to a largest size.
constexpr double closedMargin = 6;
constexpr double closedMaximumDiameter = 20;
constexpr double compactCentreX = 40;

// The middle of the card area: below the header, with half the mascot's default box.
constexpr double headerBottom = 42;
constexpr double defaultBox = 84;

// The mascot rides the head of the progress bar.
constexpr double uploadTrackLeft = 36;
constexpr double uploadTrackWidth = 526;
constexpr double uploadDefaultY = 103;

double notchWidthOf(const ScreenInfo &screen)
{
    if (!screen.auxiliaryTopLeftWidth || !screen.auxiliaryTopRightWidth)
        return IslandConst::unknownNotchWidth;
    const double candidate
        = screen.frame.width() - *screen.auxiliaryTopLeftWidth - *screen.auxiliaryTopRightWidth;
    const bool plausible = candidate > 0 && candidate < screen.frame.width();
    return plausible ? candidate : IslandConst::unknownNotchWidth;
}

MascotPlace closedPlace(IslandMode mode, const QSizeF &island)
{
    const double x = mode == IslandMode::compact ? compactCentreX : island.width() / 2;
    return {.centre = {x, island.height() / 2},
            .diameter = std::clamp(island.height() - closedMargin, 0.0, closedMaximumDiameter)};
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

QSizeF islandSize(IslandMode mode, IslandView view, double nw, double nh, qsizetype chatCount)
{
    switch (mode) {
    case IslandMode::hidden:
        return {nw, nh};
    case IslandMode::compact:
        return {nw + IslandConst::compactExtraWidth, nh};
    case IslandMode::expanded:
        break;
    }
    if (view != IslandView::prompt)
        return {IslandConst::expandedWidth, IslandConst::viewLayout(view).height};
    const double height
        = IslandConst::promptBaseHeight + IslandConst::promptHeightPerMessage * double(chatCount);
    return {IslandConst::expandedWidth, std::min(height, IslandConst::promptMaximumHeight)};
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
    return islandShape(state.mode,
                       islandSize(state.mode, state.view, state.notchWidth, state.notchHeight,
                                  state.chatHistory.value().size()));
}

double uploadTrackX(double progress)
{
    return progress * uploadTrackWidth + uploadTrackLeft;
}

MascotPlace mascotPlace(IslandMode mode, IslandView view, const QSizeF &island, bool hasNotch,
                        double uploadProgress)
{
    if (mode == IslandMode::hidden && hasNotch)
        return {.centre = {46, 16}, .diameter = 6, .opacity = 0};
    if (mode != IslandMode::expanded)
        return closedPlace(mode, island);

    const ViewLayout &layout = IslandConst::viewLayout(view);
    if (view == IslandView::uploading)
        return {.centre = {uploadTrackX(uploadProgress), layout.botY.value_or(uploadDefaultY)},
                .diameter = layout.botDiameter};

    const double middle
        = (island.height() - headerBottom - defaultBox) / 2 + headerBottom + defaultBox / 2;
    return {.centre = {layout.botX, layout.botY.value_or(middle)}, .diameter = layout.botDiameter};
}

MascotPlace mascotPlace(const AppState &state)
{
    const IslandShape shape = islandShape(state);
    return mascotPlace(state.mode, state.view, {shape.width, shape.height}, state.hasNotch,
                       state.uploadProgress);
}

bool isBotHit(QPointF inPanel, const AppState &state)
{
    const MascotPlace place = mascotPlace(state);
    const double left = (IslandConst::panelWidth - islandShape(state).width) / 2;
    const QPointF offset = inPanel - place.centre - QPointF(left, 0);
    const double radius = place.diameter * canvasPerDiameter / 2;
    return radius > 0 && QPointF::dotProduct(offset, offset) <= radius * radius;
}

} // namespace tirlo::IslandGeometry
