#pragma once

#include "OwnedProperty.h"
#include "Settings.h"
#include "model/AgentTask.h"
#include "model/ApprovalInfo.h"
#include "model/Chat.h"
#include "model/IslandPlace.h"
#include "model/IslandView.h"
#include "model/Results.h"
#include "platform/Applications.h"

#include <QList>
#include <QMap>
#include <QPointF>
#include <QProperty>
#include <QSet>

#include <memory>

namespace tirlo {

class IslandWriter;
class KeyValueStore;
class MainQueue;
struct ServiceData;

/// The one observable store: every subsystem reads and writes it, on the main thread only.
///
/// Observed fields are properties; the plain ones are polled. Its settings write through to the
/// key-value store.
class AppState
{
public:
    /// Applies the persisted settings and makes the tasks of the main pill and the active tools.
    AppState(KeyValueStore &store, const MainQueue &clock);
    ~AppState();
    AppState(const AppState &) = delete;
    AppState &operator=(const AppState &) = delete;

    // The island, which alone changes them.
    OwnedProperty<IslandMode, IslandWriter> mode{IslandMode::hidden};
    OwnedProperty<IslandView, IslandWriter> view{IslandView::overview};

    /// How much higher than usual the card of the request or question on show is, in points.
    QProperty<double> cardGrowth{0};

    // The pills, in shown order, and the one in focus.
    QProperty<QList<AgentTask>> tasks;
    QProperty<std::optional<QString>> focusId;
    /// A mood imposed on the mascot; it wins over the focused task's state.
    QProperty<std::optional<BotState>> stateOverride;

    // The display's notch in points, as the island's controller measured it.
    QProperty<double> notchWidth{184};
    QProperty<double> notchHeight{32};
    QProperty<bool> hasNotch{true};

    // What the desktop lets be seen of the island, as its controller found it.
    /// The user's session is locked.
    QProperty<bool> isLocked{false};
    /// A full-screen window fills the island's screen.
    QProperty<bool> isScreenFull{false};

    /// The last frontmost other application.
    std::optional<RunningApplication> lastExternalApp;
    QProperty<bool> isDraggingBot{false};
    /// The last pointer position on the screen, in points.
    QPointF mousePosition;

    /// Another program has the hotkey, so that it does nothing here.
    QProperty<bool> hotkeyIsTaken{false};

    // Times are seconds on the main queue's media clock.
    double lastMouseMove = 0;
    /// Drives the auto-close countdown.
    QProperty<double> lastActivity{0};
    bool isPresent = true;
    /// Keeps the island open while an approval is on show.
    QProperty<bool> isPinned{false};

    // Files.
    QProperty<double> uploadProgress{0};
    QProperty<std::optional<double>> uploadStartTime;
    /// Seconds.
    double uploadDuration = 2.4;
    QProperty<bool> fileDragOver{false};

    // Settings, persisted on each change.
    QProperty<bool> soundEnabled{true};
    QProperty<QString> claudeModel{QStringLiteral("claude-sonnet-4-6")};
    QProperty<ChatProvider> chatProvider{ChatProvider::anthropic};
    QProperty<QString> googleChatModel{QStringLiteral("gemini-2.0-flash")};
    QProperty<QString> openAIChatModel{QStringLiteral("gpt-4o")};
    QProperty<QString> mainPillId;
    QProperty<double> soundVolume{0.12};
    /// Seconds.
    QProperty<double> autoCloseInterval{15};
    /// Seconds; changed through setAbsenceInterval().
    double absenceInterval = 180;
    /// Seconds; nothing in the program changes it.
    double greetThresholdSeconds = 120;
    QProperty<bool> hotkeyEnabled{false};
    /// Modifier mask; Shift and Command at first. Changed through setHotkey().
    QProperty<std::uint32_t> hotkeyFlags{0x120000};
    /// Key code; the N key at first. Changed through setHotkey().
    QProperty<std::uint16_t> hotkeyCode{45};
    /// Agents in plain terminals count as well.
    QProperty<bool> anyTerminal{false};
    QProperty<IslandPosition> islandPosition{IslandPosition::automatic};
    QProperty<IslandScreen> islandScreen{IslandScreen::automatic};
    /// A request or question comes up over a full-screen window, too.
    QProperty<bool> requestsOverFullscreen{true};
    QProperty<QSet<QString>> vercelProjectFilter;
    QProperty<QSet<QString>> n8nWorkflowFilter;
    QProperty<QSet<QString>> activeIntegrations;

    // Chat.
    QProperty<QMap<ChatProvider, QList<ProviderModel>>> fetchedProviderModels;
    QProperty<QMap<ChatProvider, QString>> providerModelFetchError;
    QProperty<QSet<ChatProvider>> loadingProviderModels;
    QProperty<std::optional<PromptContext>> promptContext;
    QProperty<std::optional<DroppedFile>> droppedFile;
    /// Text of the note card.
    QProperty<std::optional<QString>> noteMessage;
    QProperty<std::optional<SearchResult>> searchResult;

    /// What the pollers know of the user's web services.
    [[nodiscard]] ServiceData &services() { return *m_services; }
    [[nodiscard]] const ServiceData &services() const { return *m_services; }

    QProperty<QList<ChatMessage>> chatHistory;
    /// The permission request on show.
    QProperty<std::optional<ApprovalInfo>> pendingApproval;

    /// The task named by `focusId`, else the first one, else nothing.
    [[nodiscard]] std::optional<AgentTask> focusTask() const;
    /// The chosen model of the chosen provider.
    [[nodiscard]] QString activeChatModel() const;
    /// The first task with the id, or nothing.
    [[nodiscard]] std::optional<AgentTask> task(const QString &id) const;

    /// The first tasks but the one with the id, as many as have room beside the focused one.
    [[nodiscard]] QList<AgentTask> tasksBeside(const std::optional<QString> &id) const;

    /// Edits the first task with the id in place and publishes the list once; false without one.
    template<typename Edit>
    bool editTask(const QString &id, Edit edit)
    {
        const qsizetype index = indexOfTask(id);
        if (index < 0)
            return false;
        QList<AgentTask> edited = tasks.value();
        edit(edited[index]);
        tasks = edited;
        return true;
    }

    /// Sets the state of the first task with the id; focus and mode stay.
    void updateTask(const QString &id, BotState state);
    /// Moves the focus to a task that exists and clears its badge.
    void setFocus(const QString &id);
    /// Removes the tasks with the id; the main pill and active tools are reset instead.
    void removeTask(const QString &id);
    /// Adds or removes a catalogue tool; at most 4 can be active beside the main pill.
    void toggleIntegration(const QString &id);
    /// Brings the tasks in line with the main pill and the active tools.
    void loadIntegrationTasks();

    /// Sets and persists `absenceInterval`, in seconds.
    void setAbsenceInterval(double seconds);
    /// Sets and persists the hotkey's modifier mask and key code.
    void setHotkey(std::uint32_t flags, std::uint16_t code);

private:
    [[nodiscard]] qsizetype indexOfTask(const QString &id) const;
    void dropTasks(const QString &id);
    void sortTasksByCatalog();

    // Behind a pointer, so that a new field of theirs compiles those alone who read it.
    const std::unique_ptr<ServiceData> m_services;
    Settings m_settings;
};

} // namespace tirlo
