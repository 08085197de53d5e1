#include "AgentWho.h"

#include "core/AppState.h"
#include "ui/Color.h"
#include "ui/ColorDot.h"
#include "ui/Style.h"
#include "ui/TextLabel.h"

#include <QHBoxLayout>

namespace tirlo {

std::optional<AgentTask> sessionOf(const AppState &state, const QString &pillId,
                                   const QString &folder)
{
    std::optional<AgentTask> task = state.task(pillId);
    // The pill may go by the folder of another of its sessions.
    if (task && !folder.isEmpty() && !task->name.startsWith(folder))
        task->name = folder;
    return task;
}

AgentWho::AgentWho(AppState &state, const QString &label, QWidget *parent)
    : QWidget(parent)
    , m_state(state)
    , m_dot(new ColorDot)
    , m_name(new TextLabel(Style::font(Style::headSize, QFont::DemiBold), Style::primaryText))
    , m_label(new TextLabel(Style::font(Style::headSize), Style::secondaryText))
{
    m_label->setNeverElided();
    m_label->setLine(label);

    auto *row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(Style::headSpacing);
    row->addWidget(m_dot);
    row->addWidget(m_name);
    row->addWidget(m_label);
    row->addStretch();

    followTask();
    m_observers.follow(state.tasks, [this] { followTask(); });
    m_observers.follow(state.focusId, [this] { followTask(); });
}

void AgentWho::nameSession(const QString &pillId, const QString &folder)
{
    m_namesSession = true;
    setTask(sessionOf(m_state, pillId, folder));
}

void AgentWho::followFocus()
{
    m_namesSession = false;
    followTask();
}

void AgentWho::followTask()
{
    if (!m_namesSession)
        setTask(m_state.focusTask());
}

void AgentWho::setLabel(const QString &label)
{
    m_label->setLine(label);
    m_label->updateGeometry();
}

void AgentWho::setTask(const std::optional<AgentTask> &task)
{
    m_dot->setVisible(task.has_value());
    m_name->setVisible(task && !task->name.isEmpty());
    if (!task)
        return;
    m_dot->setColor(colorFromHex(task->color));
    m_name->setLine(task->name);
}

} // namespace tirlo
