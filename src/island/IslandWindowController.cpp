#include "IslandWindowController.h"

#include "core/AppState.h"
#include "core/Notifications.h"
#include "mascot/SoundEngine.h"
#include "platform/MainQueue.h"

#include <cmath>

namespace tirlo {

namespace {

ScreenInfo chosenScreen(const Screens &screens)
{
    if (const auto screen = IslandGeometry::notchScreen(screens))
        return *screen;
    if (const auto screen = screens.main())
        return *screen;
    qFatal("There is no screen to put the island on.");
}

} // namespace

IslandWindowController::IslandWindowController(const Screens &screens, WindowShape &shape,
                                               AppState &state, Notifications &notifications,
                                               SoundEngine &sounds, const MainQueue &queue)
    : m_state(state)
    , m_sounds(sounds)
    , m_queue(queue)
    , m_panel(std::make_unique<IslandPanel>(state, shape))
{
    const ScreenInfo screen = chosenScreen(screens);
    setupPanel(screen, IslandGeometry::screenGeometry(screen, screens.statusBarThickness()));
    observeNotifications(notifications);
}

void IslandWindowController::expand(IslandView to)
{
    m_state.view = to;
    setMode(IslandMode::expanded);
    m_state.lastActivity = m_queue.mediaTime();
}

void IslandWindowController::collapse()
{
    if (isHeldOpen())
        return;
    m_state.isPinned = false;
    setMode(IslandMode::compact);
}

void IslandWindowController::setMode(IslandMode mode)
{
    const IslandMode old = m_state.mode;
    if (mode == old)
        return;
    m_state.mode = mode;
    if (mode == IslandMode::expanded)
        m_sounds.play(QStringLiteral("open"));
    if (old != IslandMode::expanded)
        return;
    m_sounds.play(QStringLiteral("close"));
    if (!isHeldOpen())
        m_state.isPinned = false;
}

IslandView IslandWindowController::defaultView() const
{
    if (isHeldOpen())
        return IslandView::approval;
    return m_state.tasks.value().isEmpty() ? IslandView::empty : IslandView::overview;
}

bool IslandWindowController::isHeldOpen() const
{
    return m_state.pendingApproval.value().has_value();
}

void IslandWindowController::setupPanel(const ScreenInfo &screen, const IslandScreenGeometry &notch)
{
    m_panel->notchWidth = notch.notchWidth;
    m_panel->notchHeight = notch.notchHeight;
    m_state.notchWidth = notch.notchWidth;
    m_state.notchHeight = notch.notchHeight;
    m_state.hasNotch = notch.hasNotch;

    const double left = screen.frame.center().x() - IslandConst::panelWidth / 2.0;
    m_panel->move(int(std::round(left)), int(std::round(screen.frame.top())));
    connect(m_panel.get(), &IslandPanel::islandPressed, this, [this] {
        if (m_state.mode != IslandMode::expanded)
            expand(defaultView());
    });
}

void IslandWindowController::observeNotifications(const Notifications &notifications)
{
    connect(&notifications, &Notifications::hookExpand, this, &IslandWindowController::expand);
    connect(&notifications, &Notifications::hookReveal, this, &IslandWindowController::reveal);
    connect(&notifications, &Notifications::islandCollapse, this,
            &IslandWindowController::collapse);
}

void IslandWindowController::reveal()
{
    if (m_state.mode != IslandMode::hidden)
        return;
    m_sounds.play(QStringLiteral("peek"));
    setMode(IslandMode::compact);
}

} // namespace tirlo
