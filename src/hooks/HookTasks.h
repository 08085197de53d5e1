#pragma once

#include "core/model/AgentTask.h"
#include "core/model/IslandView.h"

#include <QString>

#include <optional>

namespace tirlo {

class AppState;
class Notifications;

/// The pills of agents' sessions in the store, and the island that opens for them.
class HookTasks
{
public:
    HookTasks(AppState &state, Notifications &notifications);

    /// The last session that started, prompted, ran a tool or asked; none once it has ended.
    std::optional<QString> activeSessionId;

    /// Makes the pill of a built-in tool right behind the main one, or renames it if it is there.
    ///
    /// Only a pill that is there learns the working directory.
    void upsertWorkspaceTask(const QString &id, const QString &projectName, const QString &cwd);

    /// Makes the pill of an agent from outside right behind the editor's, unless it is there.
    void upsertExternalAgent(const QString &id, const QString &name);

    /// Appends a step, of which the 20 most recent are kept, and shows it.
    void appendStep(const QString &id, const QString &step);

    /// Asks for the island to open on the view when that is urgent, else to show at least the
    /// compact one; an approval on show is never replaced.
    void expandIfNeeded(IslandView view);

private:
    /// Inserts the task behind the one with id `anchor`, at `otherwise` without such a task.
    void insert(const AgentTask &task, const QString &anchor, qsizetype otherwise);

    AppState &m_state;
    Notifications &m_notifications;
};

} // namespace tirlo
