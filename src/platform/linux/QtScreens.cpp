#include "QtScreens.h"

#include "DisplayNotch.h"

#include <QGuiApplication>
#include <QScreen>

namespace tirlo {

QtScreens::QtScreens(const QString &systemRoot)
    : m_notchHeight(shownNotchHeight(systemRoot))
{
}

std::vector<ScreenInfo> QtScreens::all() const
{
    std::vector<ScreenInfo> screens;
    for (const QScreen *screen : QGuiApplication::screens())
        screens.push_back(info(*screen));
    return screens;
}

std::optional<ScreenInfo> QtScreens::main() const
{
    const QScreen *primary = QGuiApplication::primaryScreen();
    return primary ? std::optional(info(*primary)) : std::nullopt;
}

double QtScreens::statusBarThickness() const
{
    // What the common panels of the desktop measure.
    return 24;
}

ScreenInfo QtScreens::info(const QScreen &screen) const
{
    // The connector of a laptop's own display. Nothing tells how wide its notch is.
    const bool isBuiltIn = screen.name().startsWith(QLatin1String("eDP"));
    return {.frame = screen.geometry(),
            .visibleFrame = screen.availableGeometry(),
            .safeAreaTop = isBuiltIn ? m_notchHeight / screen.devicePixelRatio() : 0,
            .auxiliaryTopLeftWidth = std::nullopt,
            .auxiliaryTopRightWidth = std::nullopt};
}

} // namespace tirlo
