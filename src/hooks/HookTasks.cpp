#include "HookTasks.h"

#include "ProjectColors.h"
#include "core/AgentCatalog.h"
#include "core/AppState.h"
#include "core/Notifications.h"

#include <algorithm>

namespace tirlo {

namespace {

constexpr qsizetype maximumSteps = 20;

bool isUrgent(IslandView view)
{
    return view == IslandView::error || view == IslandView::finished
        || view == IslandView::confused;
}

} // namespace

HookTasks::HookTasks(AppState &state, Notifications &notifications)
    : m_state(state)
    , m_notifications(notifications)
{
}

void HookTasks::upsertWorkspaceTask(const QString &id, const QString &projectName,
                                    const QString &cwd)
{
    const bool exists = m_state.editTask(id, [&](AgentTask &task) {
        // Those that are there give it its name.
        if (task.sessions.isEmpty())
            task.name = projectName;
        if (!cwd.isEmpty())
            task.sessionCwd = cwd;
    });
    if (exists)
        return;

    AgentTask task;
    task.id = id;
    task.name = projectName;
    const PillDefinition *row = PillCatalog::definition(id);
    task.color = row ? row->color : QStringLiteral("#C0C4CC");
    task.source = row ? row->source : AgentSource::agent;
    task.isIntegration = true;
    insert(task, m_state.mainPillId, 0);
}

void HookTasks::upsertExternalAgent(const QString &id, const QString &name)
{
    if (m_state.task(id))
        return;

    AgentTask task;
    task.id = id;
    task.name = name;
    task.color = IslandConst::colorForProject(name);
    task.source = AgentSource::agent;
    insert(task, AgentCatalog::pillId(AgentId::claudeCode), m_state.tasks.value().size());
}

void HookTasks::appendStep(const QString &id, const QString &step)
{
    m_state.editTask(id, [&step](AgentTask &task) {
        task.steps.append(step);
        if (task.steps.size() > maximumSteps)
            task.steps.removeFirst();
        task.stepIndex = task.steps.size() - 1;
    });
}

void HookTasks::expandIfNeeded(IslandView view)
{
    if (!isUrgent(view))
        Q_EMIT m_notifications.hookReveal();
    else if (!m_state.pendingApproval.value())
        Q_EMIT m_notifications.hookExpand(view);
}

void HookTasks::insert(const AgentTask &task, const QString &anchor, qsizetype otherwise)
{
    QList<AgentTask> tasks = m_state.tasks;
    const auto found = std::ranges::find(tasks, anchor, &AgentTask::id);
    tasks.insert(found == tasks.end() ? otherwise : found - tasks.begin() + 1, task);
    m_state.tasks = tasks;
    if (!m_state.focusId.value())
        m_state.focusId = task.id;
}

} // namespace tirlo
