#include "IslandLayout.h"

#include "AppState.h"
#include "IslandConst.h"

#include <algorithm>

namespace tirlo::IslandLayout {

namespace {

// A closed island's mascot keeps this distance to the edges, up to a largest size.
constexpr double closedMargin = 6;
constexpr double closedMaximumDiameter = 20;
constexpr double compactCentreX = 40;

/// It shrinks into the left edge of the notch and is gone there.
constexpr MascotPlace behindNotch{.centre = {46, 16}, .diameter = 6, .opacity = 0};

// The middle of the card area: below the header, with half the mascot's default box.
constexpr double headerBottom = 42;
constexpr double defaultBox = 84;

// The mascot rides the head of the progress bar.
constexpr double uploadTrackLeft = 36;
constexpr double uploadTrackWidth = 526;
constexpr double uploadDefaultY = 103;

MascotPlace closedPlace(double x, double islandHeight)
{
    return {.centre = {x, islandHeight / 2},
            .diameter = std::clamp(islandHeight - closedMargin, 0.0, closedMaximumDiameter)};
}

} // namespace

double cardGrowth(IslandView view, const AppState &state)
{
    return asksTheUser(view) ? state.cardGrowth.value() : 0;
}

QSizeF islandSize(IslandMode mode, IslandView view, double nw, double nh, qsizetype chatCount,
                  double cardGrowth)
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
        return {IslandConst::expandedWidth, IslandConst::viewLayout(view).height + cardGrowth};
    const double height
        = IslandConst::promptBaseHeight + IslandConst::promptHeightPerMessage * double(chatCount);
    return {IslandConst::expandedWidth, std::min(height, IslandConst::promptMaximumHeight)};
}

QSizeF islandSize(const AppState &state)
{
    return islandSize(state.mode, state.view, state.notchWidth, state.notchHeight,
                      state.chatHistory.value().size(), cardGrowth(state.view, state));
}

double uploadTrackX(double progress)
{
    return progress * uploadTrackWidth + uploadTrackLeft;
}

MascotPlace compactMascotPlace(const QSizeF &island)
{
    return closedPlace(compactCentreX, island.height());
}

MascotPlace mascotPlace(IslandMode mode, IslandView view, const QSizeF &island, bool hasNotch,
                        double uploadProgress)
{
    if (mode == IslandMode::compact)
        return compactMascotPlace(island);
    if (mode == IslandMode::hidden)
        return hasNotch ? behindNotch : closedPlace(island.width() / 2, island.height());

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
    return mascotPlace(state.mode, state.view, islandSize(state), state.hasNotch,
                       state.uploadProgress);
}

} // namespace tirlo::IslandLayout
