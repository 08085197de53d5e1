#include "QtScreens.h"

#include "DisplayNotch.h"
#include "NativeScreen.h"

#include <QGuiApplication>
#include <QScreen>

namespace tirlo {

namespace {

/// Seconds in which changes are gathered: screens come and go in several steps.
constexpr double gatheringTime = 0.1;

} // namespace

QtScreens::QtScreens(const XcbStack &stack, MainQueue &queue, const QString &systemRoot)
    : m_queue(queue)
    , m_panels(stack)
    , m_notchHeight(shownNotchHeight(systemRoot))
{
    for (const QScreen *screen : QGuiApplication::screens())
        follow(*screen);
    connect(qGuiApp, &QGuiApplication::screenAdded, this, [this](const QScreen *screen) {
        follow(*screen);
        tell();
    });
    connect(qGuiApp, &QGuiApplication::screenRemoved, this, &QtScreens::tell);
    connect(qGuiApp, &QGuiApplication::primaryScreenChanged, this, &QtScreens::tell);
    connect(&m_panels, &XcbPanels::changed, this, &QtScreens::tell);
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

void QtScreens::follow(const QScreen &screen)
{
    connect(&screen, &QScreen::geometryChanged, this, &QtScreens::tell);
    connect(&screen, &QScreen::availableGeometryChanged, this, &QtScreens::tell);
    connect(&screen, &QScreen::logicalDotsPerInchChanged, this, &QtScreens::tell);
}

void QtScreens::tell()
{
    if (!m_telling.isPending())
        m_telling = m_queue.after(gatheringTime, this, [this] { Q_EMIT changed(); });
}

ScreenInfo QtScreens::info(const QScreen &screen) const
{
    // The connector of a laptop's own display. Nothing tells how wide its notch is.
    const bool isBuiltIn = screen.name().startsWith(QLatin1String("eDP"));
    const int panel = m_panels.depthAt(nativeScreen(screen.geometry()),
                                       &screen == QGuiApplication::primaryScreen());
    return {.frame = screen.geometry(),
            .visibleFrame = screen.availableGeometry(),
            .topPanel = panel / screen.devicePixelRatio(),
            .safeAreaTop = isBuiltIn ? m_notchHeight / screen.devicePixelRatio() : 0,
            .auxiliaryTopLeftWidth = std::nullopt,
            .auxiliaryTopRightWidth = std::nullopt};
}

} // namespace tirlo
