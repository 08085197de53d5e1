#pragma once

#include "core/model/AgentTask.h"

#include <QWidget>

#include <optional>

namespace tirlo {

class ColorDot;
class TextLabel;

/// The head line of a decision card: whom it is about, and what is the matter.
class AgentWho final : public QWidget
{
    Q_OBJECT

public:
    explicit AgentWho(const QString &label, QWidget *parent = nullptr);

    /// Shows the task's dot and name before the label; without a task the label stands alone.
    void setTask(const std::optional<AgentTask> &task);

private:
    ColorDot *m_dot;
    TextLabel *m_name;
};

} // namespace tirlo
