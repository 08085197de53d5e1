#pragma once

#include "IslandShape.h"
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

/// The mascot's canvas is so much wider than its body.
inline constexpr double canvasPerDiameter = 1 / 0.6;

/// Where the mascot stands on the island, and how big its body is.
struct MascotPlace
{
    /// Relative to the island's top-left corner.
    QPointF centre;
    double diameter = 0;
    double opacity = 1;

    bool operator==(const MascotPlace &) const = default;
};

/// The rules by which the island is sized, drawn and hit.
namespace IslandGeometry {

/// The first screen with a notch, or nothing.
[[nodiscard]] std::optional<ScreenInfo> notchScreen(const Screens &screens);

/// Measures the screen; `statusBarThickness` serves where the screen has no bar of its own.
[[nodiscard]] IslandScreenGeometry screenGeometry(const ScreenInfo &screen,
                                                  double statusBarThickness);

/// The island's size; `nw` and `nh` are the notch's width and height.
[[nodiscard]] QSizeF islandSize(IslandMode mode, IslandView view, double nw, double nh,
                                qsizetype chatCount);

/// The outline at rest of an island of that size.
[[nodiscard]] IslandShape islandShape(IslandMode mode, const QSizeF &size);

/// The outline at rest for what the store says now.
[[nodiscard]] IslandShape islandShape(const AppState &state);

/// Where on the island the head of the upload's bar is, and the mascot with it.
[[nodiscard]] double uploadTrackX(double progress);

/// The mascot's place on an island of that size.
[[nodiscard]] MascotPlace mascotPlace(IslandMode mode, IslandView view, const QSizeF &island,
                                      bool hasNotch, double uploadProgress);

/// The mascot's place for what the store says now.
[[nodiscard]] MascotPlace mascotPlace(const AppState &state);

/// Whether a point of the panel lies on the mascot, its whole canvas counted.
[[nodiscard]] bool isBotHit(QPointF inPanel, const AppState &state);

} // namespace IslandGeometry

} // namespace tirlo
