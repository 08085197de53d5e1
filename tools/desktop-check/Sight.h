#pragma once

#include <QImage>
#include <QRect>
#include <QString>

namespace tirlo::Sight {

/// The whole screen as the user sees it now; null when there is no picture to be had.
[[nodiscard]] QImage screen();

/// Where the island's window stands, in screen pixels; empty while it is not mapped.
[[nodiscard]] QRect islandWindow();

/// Whether the island's window is among those that a task list shows.
[[nodiscard]] bool isInTaskList();

/// How wide the island is drawn, in pixels: the black run through the middle of its upper edge.
[[nodiscard]] int drawnWidth();

/// Whether the desktop has a tray, which asks programs over the session bus.
[[nodiscard]] bool hasTray();

/// Whether that tray has an item of a program.
[[nodiscard]] bool hasStatusItem();

} // namespace tirlo::Sight
