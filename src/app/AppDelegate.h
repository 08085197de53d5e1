#pragma once

#include "chat/ClaudeService.h"
#include "chat/ModelCatalogues.h"
#include "core/AppLog.h"
#include "core/AppState.h"
#include "core/KeychainStore.h"
#include "core/Notifications.h"
#include "core/Paths.h"
#include "hooks/HookServer.h"
#include "hooks/installers/HookInstallers.h"
#include "integrations/ServicePollers.h"
#include "island/Island.h"
#include "island/IslandWindowController.h"
#include "mascot/PooledSoundEngine.h"
#include "platform/BackgroundWorker.h"
#include "platform/linux/AlAudioOutput.h"
#include "platform/linux/DesktopApplications.h"
#include "platform/linux/DesktopLook.h"
#include "platform/linux/DesktopSessionLock.h"
#include "platform/linux/FileKeyValueStore.h"
#include "platform/linux/Keychain.h"
#include "platform/linux/PidfdProcessWatch.h"
#include "platform/linux/QtHttpClient.h"
#include "platform/linux/QtMainQueue.h"
#include "platform/linux/QtPointer.h"
#include "platform/linux/QtScreens.h"
#include "platform/linux/TrayStatusItem.h"
#include "platform/linux/XcbHotkey.h"
#include "platform/linux/XcbInputMonitor.h"
#include "platform/linux/XcbPanelWindow.h"
#include "platform/linux/XcbStack.h"
#include "platform/linux/XcbWindowList.h"
#include "platform/linux/XcbWindowShape.h"
#include "settings/SettingsOpener.h"
#include "ui/motion/FrameClock.h"
#include "ui/motion/TimerFrameDriver.h"
#include "views/CardSight.h"
#include "views/IslandActions.h"

#include <optional>

namespace tirlo {

/// Builds every long-lived object once, in order, and hands each its collaborators.
///
/// What is declared earlier outlives what is declared later.
class AppDelegate
{
public:
    explicit AppDelegate(const Paths &paths);
    ~AppDelegate();

    /// Shows the island and begins to listen to agents.
    void applicationDidFinishLaunching();

    /// Opens the island on its overview.
    void openIsland();

    /// Opens the settings window below the island.
    void openSettings();

    /// Waits until settings and logs are written.
    void flush();

private:
    void setupMenuBarItem();
    void followDesktopLook();
    void setupIsland();

    const Paths m_paths;
    QtMainQueue m_queue;
    const AppLog m_log{m_paths, m_queue};
    FileKeyValueStore m_settings{m_paths.settingsPath(), m_queue};
    Keychain m_keychain{m_paths.secretsPath()};
    QtHttpClient m_http{m_queue};
    XcbStack m_stack{m_queue};
    QtScreens m_screens{m_stack, m_queue};
    XcbWindowShape m_windowShape;
    QtPointer m_pointer;
    XcbInputMonitor m_inputMonitor;
    XcbHotkey m_hotkey{m_queue};
    XcbWindowList m_windowList{m_stack};
    XcbPanelWindow m_panelWindow{m_stack};
    DesktopSessionLock m_sessionLock{m_stack, m_queue};
    DesktopApplications m_applications;
    PidfdProcessWatch m_processes{m_queue};
    AlAudioOutput m_audioOutput{m_queue};
    TimerFrameDriver m_pollDriver;
    TimerFrameDriver m_frameDriver;
    FrameClock m_frames{m_queue, m_frameDriver};

    AppState m_state{m_settings, m_queue};
    Notifications m_notifications;
    PooledSoundEngine m_sounds{m_state, m_audioOutput};
    Island m_island{m_state, m_notifications, m_sounds, m_queue};
    KeychainStore m_keychainStore{m_keychain};
    ClaudeService m_claude{m_state, m_notifications, m_island,       m_keychainStore,
                           m_http,  m_queue,         ProviderHosts{}};
    ModelCatalogues m_modelCatalogues{m_state, m_keychainStore, m_http, m_queue, ProviderHosts{}};
    HookServer m_hookServer;
    HookInstallers m_hookInstallers{m_paths, m_queue};
    ServicePollers m_pollers;
    const IslandActions m_islandActions;
    CardSight m_cardSight{m_queue};
    SettingsOpener m_settingsOpener{m_hookInstallers, m_paths};
    DesktopLook m_look;
    TrayStatusItem m_statusItem{m_queue};
    std::optional<IslandWindowController> m_islandController;
    BackgroundWorker m_keychainLoading;
};

} // namespace tirlo
