#include "Island.h"

#include "Desktop.h"

#include <QGuiApplication>
#include <QPixmap>
#include <QScreen>

namespace tirlo::e2e {

/// The island is the dark run across the top of the screen: the greeting's light reaches up there,
/// but stays far below the wallpaper's.
int islandWidth()
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

bool waitForWidth(int width, int milliseconds)
{
    return waitUntil([width] { return islandWidth() == width; }, milliseconds);
}

QImage takeIslandPicture(int width, const QRect &part)
{
    const QPoint corner(screenMiddle() - width / 2, 0);
    const QRect onScreen = part.translated(corner);
    return QGuiApplication::primaryScreen()
        ->grabWindow(0, onScreen.x(), onScreen.y(), onScreen.width(), onScreen.height())
        .toImage();
}

int countPixels(int width, const QRect &part, const std::function<bool(const QColor &)> &fits)
{
    const QImage image = takeIslandPicture(width, part);
    int count = 0;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x)
            count += fits(image.pixelColor(x, y)) ? 1 : 0;
    }
    return count;
}

} // namespace tirlo::e2e
