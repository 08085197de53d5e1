#include "SettingsPlacement.h"

#include "core/IslandConst.h"

#include <algorithm>

namespace tirlo {

namespace {

constexpr double margin = 12;

} // namespace

QRectF placeBelowIsland(const ScreenInfo &screen, QSizeF window, QSizeF minimum)
{
    const QRectF &visible = screen.visibleFrame;
    const double top
        = std::max(screen.frame.top() + IslandConst::panelHeight + margin, visible.top());
    const double lowest = visible.bottom() - margin;
    const double height = std::min(window.height(), std::max(lowest - top, minimum.height()));
    const double width
        = std::min(window.width(), std::max(visible.width() - 2 * margin, minimum.width()));
    const double left = std::max(visible.left() + margin, visible.center().x() - width / 2);
    // The lower edge stays on the screen, even where the window then reaches over the island.
    return {left, std::min(lowest, top + height) - height, width, height};
}

} // namespace tirlo
