#pragma once

#include "Desktop.h"

#include <QColor>
#include <QGuiApplication>
#include <QImage>
#include <QPixmap>
#include <QScreen>

namespace tirlo::e2e {

/// Widths of the island in screen pixels, on the stage's plain screen.
inline constexpr int compactWidth = 240;
inline constexpr int openWidth = 640;

/// How wide the island is on the screen now, in pixels: the dark run across the top.
///
/// The greeting's light reaches up there, but stays far below the wallpaper's.
inline int islandWidth()
{
    QScreen *screen = QGuiApplication::primaryScreen();
    const QImage line = screen->grabWindow(0, 0, 2, screen->geometry().width(), 1).toImage();
    const auto isDark = [&](int x) { return line.pixelColor(x, 0).lightness() < 32; };
    int left = screenMiddle();
    int right = left;
    while (left > 0 && isDark(left - 1))
        --left;
    while (right < line.width() && isDark(right))
        ++right;
    return right - left;
}

/// Whether the island comes to be that wide within the time.
inline bool waitForWidth(int width, int milliseconds = 5000)
{
    return waitUntil([width] { return islandWidth() == width; }, milliseconds);
}

} // namespace tirlo::e2e
