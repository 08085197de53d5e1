#pragma once

#include "core/model/AgentTask.h"

#include <QWidget>

#include <optional>

namespace tirlo {

class ColorDot;
class TextButton;
class TextLabel;

/// The overview's head line: the focused task's name, where it comes from and how far it is; and a
/// button that says of how many sessions, where there are several.
class FocusLine final : public QWidget
{
    Q_OBJECT

public:
    explicit FocusLine(QWidget *parent = nullptr);

    /// Without a task the line is empty.
    void setTask(const std::optional<AgentTask> &task);

    /// Checked while the user looks at the sessions; hidden and not checked without several.
    [[nodiscard]] TextButton &sessionsButton() { return *m_sessions; }

private:
    ColorDot *m_dot;
    TextLabel *m_name;
    TextLabel *m_source;
    TextLabel *m_progress;
    TextButton *m_sessions;
};

} // namespace tirlo
