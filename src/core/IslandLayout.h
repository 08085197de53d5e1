#pragma once

#include "core/model/IslandView.h"

#include <QPointF>
#include <QSizeF>

namespace tirlo {

class AppState;

/// Where the mascot stands on the island, and how big its body is.
struct MascotPlace
{
    /// Relative to the island's top-left corner.
    QPointF centre;
    double diameter = 0;
    double opacity = 1;

    bool operator==(const MascotPlace &) const = default;
};

/// How large the island is at rest and where the mascot stands on it; lengths in points.
///
/// Whoever draws, hits or looks from there asks here.
namespace IslandLayout {

/// The mascot's canvas is so much wider than its body.
inline constexpr double canvasPerDiameter = 1 / 0.6;

/// How much higher than usual the view's card is: only that of a request or a question grows.
[[nodiscard]] double cardGrowth(IslandView view, const AppState &state);

/// The island's size; `nw` and `nh` are the notch's width and height.
[[nodiscard]] QSizeF islandSize(IslandMode mode, IslandView view, double nw, double nh,
                                qsizetype chatCount, double cardGrowth = 0);

/// The island's size for what the store says now.
[[nodiscard]] QSizeF islandSize(const AppState &state);

/// Where on the island the head of the upload's bar is, and the mascot with it.
[[nodiscard]] double uploadTrackX(double progress);

/// The mascot's place on a compact island of that size.
[[nodiscard]] MascotPlace compactMascotPlace(const QSizeF &island);

/// The mascot's place on an island of that size.
[[nodiscard]] MascotPlace mascotPlace(IslandMode mode, IslandView view, const QSizeF &island,
                                      bool hasNotch, double uploadProgress);

/// The mascot's place for what the store says now.
[[nodiscard]] MascotPlace mascotPlace(const AppState &state);

} // namespace IslandLayout

} // namespace tirlo
