#pragma once

#include "core/model/AgentTask.h"

#include <QWidget>

#include <optional>

namespace tirlo {

/// The live line of a task: its current step, and above it the step before.
class TickerView final : public QWidget
{
    Q_OBJECT

public:
    explicit TickerView(QWidget *parent = nullptr);

    /// Follows the task's steps; without a task only the placeholder shows.
    void setTask(const std::optional<AgentTask> &task);

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    struct Rows
    {
        QString spent;
        QString live;

        bool operator==(const Rows &) const = default;
    };

    [[nodiscard]] static Rows rowsOf(const std::optional<AgentTask> &task);

    Rows m_rows;
};

} // namespace tirlo
