#include "AgentPillsView.h"

#include "AgentPill.h"
#include "core/AppState.h"
#include "mascot/SoundEngine.h"
#include "platform/MainQueue.h"

#include <algorithm>

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
    for (AgentPill *&pill : m_pills) {
        pill = new AgentPill(context, this);
        connect(pill, &AgentPill::clicked, this, [this, pill] { tap(pill->task().id); });
    }
    updatePills();
    m_observers.follow(m_context.state.tasks, [this] { updatePills(); });
    m_observers.follow(m_context.state.focusId, [this] { updatePills(); });
}

QList<AgentTask> AgentPillsView::others() const
{
    QList<AgentTask> tasks = m_context.state.tasks;
    if (const auto focused = m_context.state.focusTask())
        tasks.removeIf([&](const AgentTask &task) { return task.id == focused->id; });
    return tasks;
}

QList<AgentTask> AgentPillsView::displayTasks() const
{
    const QList<AgentTask> tasks = others();
    return tasks.first(std::min(tasks.size(), qsizetype(m_pills.size())));
}

void AgentPillsView::resizeEvent(QResizeEvent *)
{
    placePills();
}

void AgentPillsView::updatePills()
{
    const QList<AgentTask> tasks = displayTasks();
    for (std::size_t i = 0; i < m_pills.size(); ++i) {
        const bool isUsed = qsizetype(i) < tasks.size();
        if (isUsed)
            m_pills[i]->setTask(tasks[qsizetype(i)]);
        m_pills[i]->setVisible(isUsed);
    }
    placePills();
}

void AgentPillsView::placePills()
{
    const int count = int(displayTasks().size());
    const int rowCount = (count + columnCount - 1) / columnCount;
    const int gridHeight = rowCount * AgentPill::capsuleHeight + (rowCount - 1) * rowSpacing;
    const int top = (height() - gridHeight) / 2;
    const int pillWidth = (width() - 2 * padding - (columnCount - 1) * columnSpacing) / columnCount;

    for (int i = 0; i < count; ++i) {
        const QRect capsule(padding + i % columnCount * (pillWidth + columnSpacing),
                            top + i / columnCount * (AgentPill::capsuleHeight + rowSpacing),
                            pillWidth, AgentPill::capsuleHeight);
        m_pills[std::size_t(i)]->setGeometry(AgentPill::frameAround(capsule));
    }
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
