#include "AppDelegate.h"

#include "chat/ProviderSwitch.h"
#include "ui/ProgramIcon.h"
#include "views/frame/IslandRootView.h"

#include <QDebug>
#include <QGuiApplication>
#include <QIcon>
#include <QScreen>

namespace tirlo {

namespace {

/// Seconds from the start to the loading of the sounds and the keys: behind the first frames,
/// before the first use of a key. A sound that is played earlier is loaded by itself.
constexpr double loadingDelay = 0.3;

} // namespace

AppDelegate::AppDelegate(const Paths &paths)
    : m_paths(paths)
    , m_hookServer({m_state, m_notifications, m_island, m_sounds, m_queue, m_processes, m_log},
                   m_paths)
    , m_pollers({m_state, m_notifications, m_sounds, m_queue, m_http, m_keychainStore, m_log})
    , m_islandActions{
          .sendApprovalDecision
          = [this](const ApprovalAnswer &answer) { m_hookServer.sendApprovalDecision(answer); },
          .capturePromptContext = {},
          .switchChatProvider =
              [this](ChatProvider provider) {
                  tirlo::switchChatProvider(provider, m_state, m_notifications, m_island, m_sounds);
              }}
{
}

AppDelegate::~AppDelegate()
{
    // Whoever still waits for the keyring to be unlocked waits no longer.
    m_keychain.stopAsking();
}

void AppDelegate::applicationDidFinishLaunching()
{
    followDesktopLook();
    setupMenuBarItem();
    QObject::connect(&m_look, &DesktopLook::changed, &m_look, [this] { followDesktopLook(); });
    setupIsland();
    m_queue.after(loadingDelay, &m_notifications, [this] {
        m_sounds.preload();
        // The keyring may be slow, and may have to wait for the user.
        m_keychainLoading.post([this] { m_keychainStore.load(); });
    });
}

void AppDelegate::setupMenuBarItem()
{
    m_statusItem.show(
        QStringLiteral("Tirlo"), [this] { openIsland(); },
        {{QStringLiteral("Open Tirlo"), {}, [this] { openIsland(); }},
         {},
         {QStringLiteral("Settings…"), QStringLiteral("Ctrl+,"), [this] { openSettings(); }},
         {},
         {QStringLiteral("Quit"), QStringLiteral("Ctrl+Q"), [] { QCoreApplication::quit(); }}});
}

void AppDelegate::followDesktopLook()
{
    m_statusItem.setPicture(ProgramIcon::onBar(m_look.hasDarkBar()));
    m_frames.setReducesMotion(m_look.reducesMotion());
}

void AppDelegate::setupIsland()
{
    if (const QScreen *screen = QGuiApplication::primaryScreen())
        m_frames.setRate(screen->refreshRate());

    m_islandController.emplace(IslandDesktop{m_screens, m_windowShape, m_panelWindow, m_sessionLock,
                                             m_pointer, m_inputMonitor, m_hotkey, m_windowList,
                                             m_applications, m_pollDriver},
                               m_island, m_state, m_notifications, m_sounds, m_queue);
    auto *island = new IslandRootView({m_state, m_notifications, m_island, m_sounds, m_queue,
                                       m_frames, m_screens, m_applications, m_keychainStore,
                                       m_islandActions, m_cardSight});
    IslandPanel &panel = m_islandController->panel();
    QObject::connect(island, &IslandRootView::drawn, &panel, &IslandPanel::setDrawn);
    QObject::connect(&m_islandController->guard(), &PanelGuard::uncovered, island,
                     &IslandRootView::comesIntoSight);
    m_islandController->setContent(island);
    m_islandController->showWindow();
    m_island.greet();
    m_hookServer.start();
    m_pollers.start();
    QObject::connect(&m_notifications, &Notifications::openFullSettings, &m_notifications,
                     [this] { openSettings(); });
}

void AppDelegate::openIsland()
{
    m_island.open(IslandView::overview);
}

void AppDelegate::openSettings()
{
    m_island.collapse();
    m_settingsOpener.open(m_islandController->screen());
}

void AppDelegate::flush()
{
    m_settings.flush();
    m_log.flush();
}

} // namespace tirlo
