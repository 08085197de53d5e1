#include "SettingsPlacement.h"

#include "core/IslandConst.h"

#include <algorithm>

namespace tirlo {

namespace {

constexpr double margin = 12;

} // namespace

QRectF placeBelowIsland(const ScreenInfo &screen, QSizeF window, double minimumHeight)
{
    const QRectF &visible = screen.visibleFrame;
    const double top
        = std::max(screen.frame.top() + IslandConst::panelHeight + margin, visible.top());
    const double lowest = visible.bottom() - margin;
    const double height = std::min(window.height(), std::max(lowest - top, minimumHeight));
    const double left = visible.center().x() - window.width() / 2;
    // The lower edge stays on the screen, even where the window then reaches over the island.
    return {left, std::min(lowest, top + height) - height, window.width(), height};
}

} // namespace tirlo
