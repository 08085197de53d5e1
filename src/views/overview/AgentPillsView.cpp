#include "AgentPillsView.h"

#include "AgentPill.h"
#include "core/AppState.h"
#include "core/SoundEngine.h"
#include "platform/MainQueue.h"

#include <algorithm>
#include <utility>

namespace tirlo {

namespace {

constexpr int columnCount = 2;
constexpr int padding = 8;
constexpr int columnSpacing = 2;
constexpr int rowSpacing = 6;
constexpr double swapSeconds = 0.5;

} // namespace

AgentPillsView::AgentPillsView(const ViewContext &context, QWidget *parent)
    : QWidget(parent)
    , m_context(context)
{
    followTasks();
    m_observers.follow(m_context.state.tasks, [this] { followTasks(); });
    m_observers.follow(m_context.state.focusId, [this] { followTasks(); });
}

QList<AgentTask> AgentPillsView::displayTasks() const
{
    const auto focused = m_context.state.focusTask();
    return m_context.state.tasksBeside(focused ? std::optional(focused->id) : std::nullopt);
}

void AgentPillsView::resizeEvent(QResizeEvent *)
{
    placePills(displayTasks(), false);
}

void AgentPillsView::followTasks()
{
    const QList<AgentTask> tasks = displayTasks();
    const bool moves = isVisible();
    for (PillPresence &presence : m_pills) {
        const QString &id = presence.pill().task().id;
        if (std::ranges::find(tasks, id, &AgentTask::id) == tasks.end())
            presence.leave(moves, m_context.frames);
    }
    placePills(tasks, moves);
    followOrder(tasks);
    if (!showAt(m_context.frames.now()) && !m_frames.isActive())
        m_frames = m_context.frames.subscribe([this](double time) {
            if (showAt(time))
                m_frames.reset();
        });
}

void AgentPillsView::placePills(const QList<AgentTask> &tasks, bool moves)
{
    for (qsizetype i = 0; i < tasks.size(); ++i) {
        PillPresence &presence = presenceOf(tasks[i]);
        presence.pill().setTask(tasks[i]);
        presence.comeTo(cell(int(i), int(tasks.size())), moves, m_context.frames);
    }
}

/// The keyboard goes through the pills as they stand, and each capsule lies over the room around
/// the one on its left.
void AgentPillsView::followOrder(const QList<AgentTask> &tasks)
{
    QStringList order;
    for (const AgentTask &task : tasks)
        order.append(task.id);
    if (order == std::exchange(m_order, order))
        return;
    for (qsizetype i = 0; i < tasks.size(); ++i) {
        AgentPill &pill = presenceOf(tasks[i]).pill();
        pill.raise();
        if (i > 0)
            setTabOrder(&presenceOf(tasks[i - 1]).pill(), &pill);
    }
}

/// Shows the pills as they are at that time; true once all have arrived or are gone.
bool AgentPillsView::showAt(double time)
{
    bool isAtRest = true;
    std::erase_if(m_pills, [&](PillPresence &presence) {
        const bool hasArrived = presence.showAt(time);
        isAtRest &= hasArrived;
        if (!hasArrived || !presence.isLeaving())
            return false;
        // Not at once: it may be the one whose click this is.
        presence.pill().deleteLater();
        return true;
    });
    return isAtRest;
}

/// The task's pill, made if there is none.
PillPresence &AgentPillsView::presenceOf(const AgentTask &task)
{
    const auto found = std::ranges::find_if(m_pills, [&](const PillPresence &presence) {
        return presence.pill().task().id == task.id;
    });
    if (found != m_pills.end())
        return *found;
    auto *pill = new AgentPill(m_context, this);
    connect(pill, &AgentPill::clicked, this, [this, pill] { tap(pill->task().id); });
    return m_pills.emplace_back(*pill);
}

QRect AgentPillsView::cell(int index, int count) const
{
    const int rowCount = (count + columnCount - 1) / columnCount;
    const int gridHeight = rowCount * AgentPill::capsuleHeight + (rowCount - 1) * rowSpacing;
    const int top = (height() - gridHeight) / 2;
    const int width
        = (QWidget::width() - 2 * padding - (columnCount - 1) * columnSpacing) / columnCount;
    return {padding + index % columnCount * (width + columnSpacing),
            top + index / columnCount * (AgentPill::capsuleHeight + rowSpacing), width,
            AgentPill::capsuleHeight};
}

void AgentPillsView::tap(const QString &taskId)
{
    if (m_swapping)
        return;
    m_swapping = true;
    m_context.queue.after(swapSeconds, this, [this] { m_swapping = false; });
    m_context.state.setFocus(taskId);
    m_context.sounds.play(QStringLiteral("blip"));
}

} // namespace tirlo
