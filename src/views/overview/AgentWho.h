#pragma once

#include "core/model/AgentTask.h"
#include "ui/Observers.h"

#include <QWidget>

#include <optional>

namespace tirlo {

class AppState;
class ColorDot;
class TextLabel;

/// The pill's task by the name of the folder that one of its sessions works in; nothing without it.
[[nodiscard]] std::optional<AgentTask> sessionOf(const AppState &state, const QString &pillId,
                                                 const QString &folder);

/// The head line of a decision card: whom it is about, and what is the matter.
///
/// It shows the focused task's dot and name before the label, or those of whoever asked; without a
/// task the label stands alone.
class AgentWho final : public QWidget
{
    Q_OBJECT

public:
    AgentWho(AppState &state, const QString &label, QWidget *parent = nullptr);

    /// What is the matter, in place of what was said before.
    void setLabel(const QString &label);

    /// From now on it is about a session of that pill in that folder, whatever comes into focus.
    void nameSession(const QString &pillId, const QString &folder);
    /// From now on it is about the task in focus again.
    void followFocus();

private:
    void followTask();
    void setTask(const std::optional<AgentTask> &task);

    AppState &m_state;
    bool m_namesSession = false;
    ColorDot *m_dot;
    TextLabel *m_name;
    TextLabel *m_label;
    Observers m_observers;
};

} // namespace tirlo
