#pragma once

#include "platform/Screens.h"

#include <QRectF>

namespace tirlo {

/// Where the settings window stands: below the island, in the middle of what the desktop leaves.
///
/// Lengths are points, y growing downward. The window keeps its distance to the edges and
/// shrinks to fit, though not below its minimum; on a screen too small for that it reaches up over
/// the island, and past the right edge.
[[nodiscard]] QRectF placeBelowIsland(const ScreenInfo &screen, QSizeF window, QSizeF minimum);

} // namespace tirlo
