#pragma once

#include "IslandShape.h"
#include "core/model/IslandPlace.h"
#include "core/model/IslandView.h"
#include "platform/Screens.h"

#include <QPointF>
#include <QSizeF>

#include <optional>

namespace tirlo {

class AppState;

/// The notch of a screen, or what stands in for it; lengths in points.
struct IslandScreenGeometry
{
    double notchWidth = 0;
    double notchHeight = 0;
    bool hasNotch = false;

    bool operator==(const IslandScreenGeometry &) const = default;
};

/// The rules by which the island is placed, drawn and hit.
namespace IslandGeometry {

/// The first screen with a notch, or nothing.
[[nodiscard]] std::optional<ScreenInfo> notchScreen(const Screens &screens);

/// The screen for the island, or nothing when there is none; `opener` is where the pointer was when
/// the island opened, if that is known.
[[nodiscard]] std::optional<ScreenInfo> chosenScreen(const Screens &screens, IslandScreen choice,
                                                     const std::optional<QPointF> &opener);

/// How far below the screen's edge the island hangs; over a full-screen window there is no panel.
///
/// `usualPanel` is the depth of a panel that its user speaks of and nobody tells of, as may be in a
/// Wayland session.
[[nodiscard]] double hangingDepth(const ScreenInfo &screen, IslandPosition position,
                                  bool isScreenFull, double usualPanel);

/// Measures the screen; `statusBarThickness` serves where the screen has no bar of its own.
[[nodiscard]] IslandScreenGeometry screenGeometry(const ScreenInfo &screen,
                                                  double statusBarThickness);

/// The outline at rest of an island of that size.
[[nodiscard]] IslandShape islandShape(IslandMode mode, const QSizeF &size);

/// The outline at rest for what the store says now.
[[nodiscard]] IslandShape islandShape(const AppState &state);

/// Whether a point of the panel lies on the mascot, its whole canvas counted.
[[nodiscard]] bool isBotHit(QPointF inPanel, const AppState &state);

} // namespace IslandGeometry

} // namespace tirlo
