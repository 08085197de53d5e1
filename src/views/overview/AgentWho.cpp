#include "AgentWho.h"

#include "core/AppState.h"
#include "ui/Color.h"
#include "ui/ColorDot.h"
#include "ui/Style.h"
#include "ui/TextLabel.h"

#include <QHBoxLayout>

namespace tirlo {

AgentWho::AgentWho(AppState &state, const QString &label, QWidget *parent)
    : QWidget(parent)
    , m_dot(new ColorDot)
    , m_name(new TextLabel(Style::font(Style::headSize, QFont::DemiBold), Style::primaryText))
{
    auto *what = new TextLabel(Style::font(Style::headSize), Style::secondaryText);
    what->setNeverElided();
    what->setLine(label);

    auto *row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(Style::headSpacing);
    row->addWidget(m_dot);
    row->addWidget(m_name);
    row->addWidget(what);
    row->addStretch();

    setTask(state.focusTask());
    m_observers.follow(state.tasks, [this, &state] { setTask(state.focusTask()); });
    m_observers.follow(state.focusId, [this, &state] { setTask(state.focusTask()); });
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
