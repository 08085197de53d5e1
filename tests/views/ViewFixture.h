#pragma once

#include "core/AppState.h"
#include "core/KeychainStore.h"
#include "core/Notifications.h"
#include "support/FakeApplications.h"
#include "support/FakeScreens.h"
#include "support/ManualFrameDriver.h"
#include "support/ManualQueue.h"
#include "support/MemorySecretStore.h"
#include "support/MemoryStore.h"
#include "support/RecordingSoundEngine.h"
#include "ui/motion/FrameClock.h"
#include "views/IslandContainer.h"
#include "views/IslandRootView.h"

#include <QAbstractButton>
#include <QStringList>

#include <gtest/gtest.h>

#include <memory>

namespace tirlo {

/// The whole tree of views in a window of the panel's size, over a store of its own.
class ViewFixture : public testing::Test
{
protected:
    ViewFixture();

    /// Opens the island on the view and lets its motion come to rest.
    void open(IslandView view);

    /// Replaces all tasks; the first one gets the focus.
    void setTasks(const QList<AgentTask> &tasks);

    void setApproval(const QString &command, const QString &pillId);

    [[nodiscard]] static AgentTask task(const QString &id, const QString &name,
                                        const QStringList &steps = {});

    /// The accessible names of the card's visible buttons, left to right.
    [[nodiscard]] QStringList visibleButtons() const;

    /// The visible button of that name, or null.
    [[nodiscard]] QAbstractButton *button(const QString &name) const;

    /// The texts of all visible labels.
    [[nodiscard]] QStringList visibleTexts() const;

    /// Clicks in the middle of the button of that name.
    void click(const QString &name);

    [[nodiscard]] const IslandContainer &island() const;

    /// The island as it looks, at one pixel a point.
    [[nodiscard]] QImage picture();

    ManualQueue queue;
    MemoryStore store;
    AppState state{store, queue};
    Notifications notifications;
    RecordingSoundEngine sounds;
    ManualFrameDriver driver{queue};
    FrameClock frames{queue, driver};
    FakeScreens screens;
    FakeApplications applications;
    MemorySecretStore secrets;
    KeychainStore keychain{secrets};
    QStringList decisions;
    QList<ChatProvider> providers;
    int captures = 0;
    std::function<void()> onCapture;
    IslandActions actions{
        .sendApprovalDecision = [this](const QString &decision) { decisions.append(decision); },
        .capturePromptContext =
            [this] {
                ++captures;
                if (onCapture)
                    onCapture();
            },
        .switchChatProvider = [this](ChatProvider provider) { providers.append(provider); }};
    std::unique_ptr<IslandRootView> root;
};

} // namespace tirlo
