#pragma once

#include "platform/Screens.h"

#include <QRectF>

namespace tirlo {

/// Where the settings window stands: below the island, in the middle of what the desktop leaves.
///
/// Lengths are points, y growing downward. The window keeps its width and shrinks to fit, though
/// not below `minimumHeight`; on a screen too small for that its upper edge reaches over the
/// island.
[[nodiscard]] QRectF placeBelowIsland(const ScreenInfo &screen, QSizeF window,
                                      double minimumHeight);

} // namespace tirlo
