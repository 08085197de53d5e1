#include "QtScreens.h"

#include "DisplayNotch.h"
#include "NativeScreen.h"

#include <QGuiApplication>
#include <QScreen>

#include <utility>

namespace tirlo {

namespace {

/// Seconds in which changes are gathered: screens come and go in several steps.
constexpr double gatheringTime = 0.1;
/// Seconds after which all are looked at once more: the last step may not have been told.
constexpr double settlingTime = 1;

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
    read();
}

std::optional<ScreenInfo> QtScreens::main() const
{
    return m_all.empty() ? std::nullopt : std::optional(m_all.front());
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
    if (m_telling.isPending())
        return;
    m_telling = m_queue.after(gatheringTime, this, [this] {
        read();
        Q_EMIT changed();
        m_settling.cancel();
        m_settling = m_queue.after(settlingTime, this, [this] {
            if (read())
                Q_EMIT changed();
        });
    });
}

/// Reads all screens, of which Qt has the main one first; true if they are others than before.
bool QtScreens::read()
{
    std::vector<ScreenInfo> screens;
    for (const QScreen *screen : QGuiApplication::screens())
        screens.push_back(info(*screen));
    return std::exchange(m_all, screens) != screens;
}

ScreenInfo QtScreens::info(const QScreen &screen) const
{
    // The connector of a laptop's own display. Nothing tells how wide its notch is.
    const bool isBuiltIn = screen.name().startsWith(QLatin1String("eDP"));
    const int panel
        = m_panels.depthAt(nativePlace(screen), &screen == QGuiApplication::primaryScreen());
    const QRectF frame = frameOf(screen);
    const QPointF moved = frame.topLeft() - screen.geometry().topLeft();
    return {.frame = frame,
            .visibleFrame = QRectF(screen.availableGeometry()).translated(moved),
            .topPanel = panel / screen.devicePixelRatio(),
            .safeAreaTop = isBuiltIn ? m_notchHeight / screen.devicePixelRatio() : 0,
            .auxiliaryTopLeftWidth = std::nullopt,
            .auxiliaryTopRightWidth = std::nullopt};
}

} // namespace tirlo
