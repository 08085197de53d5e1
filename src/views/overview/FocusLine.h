#pragma once

#include "core/model/AgentTask.h"

#include <QWidget>

#include <optional>

namespace tirlo {

class ColorDot;
class TextLabel;

/// The overview's head line: the focused task's name, where it comes from and how far it is.
class FocusLine final : public QWidget
{
    Q_OBJECT

public:
    explicit FocusLine(QWidget *parent = nullptr);

    /// Without a task the line is empty.
    void setTask(const std::optional<AgentTask> &task);

private:
    ColorDot *m_dot;
    TextLabel *m_name;
    TextLabel *m_source;
    TextLabel *m_progress;
};

} // namespace tirlo
