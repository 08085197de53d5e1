#pragma once

#include "core/AppState.h"
#include "core/KeychainStore.h"
#include "core/Notifications.h"
#include "core/SoundEngine.h"
#include "support/FakeApplications.h"
#include "support/FakeScreens.h"
#include "support/MemorySecretStore.h"
#include "support/MemoryStore.h"
#include "support/StandInIsland.h"
#include "ui/motion/FrameClock.h"
#include "views/CardSight.h"
#include "views/frame/IslandRootView.h"

#include <memory>

namespace tirlo {

/// The island's whole tree of views in a window of its own, with an agent at work and four others.
class Scene
{
public:
    /// Queue and driver outlive the scene.
    Scene(MainQueue &queue, FrameDriver &driver);

    [[nodiscard]] QWidget &window() { return *m_root; }

private:
    MemoryStore m_settings;
    Notifications m_notifications;
    SilentSoundEngine m_sounds;
    const FakeScreens m_screens;
    FakeApplications m_applications;
    MemorySecretStore m_secrets;
    KeychainStore m_keychain{m_secrets};
    FrameClock m_frames;
    const IslandActions m_actions{.sendApprovalDecision = [](const ApprovalAnswer &) {},
                                  .switchChatProvider = [](ChatProvider) {}};

    CardSight m_sight;

public:
    AppState state;

private:
    StandInIsland m_island{state};
    std::unique_ptr<IslandRootView> m_root;
};

} // namespace tirlo
