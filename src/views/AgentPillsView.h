#pragma once

#include "ViewContext.h"
#include "core/model/AgentTask.h"
#include "ui/Observers.h"

#include <QWidget>

#include <array>

namespace tirlo {

class AgentPill;

/// The pills of the tasks that are not in focus, at most four; a tap moves the focus.
class AgentPillsView final : public QWidget
{
    Q_OBJECT

public:
    explicit AgentPillsView(const ViewContext &context, QWidget *parent = nullptr);

    /// The tasks without the focused one, in the store's order.
    [[nodiscard]] QList<AgentTask> others() const;

    /// Those of the others that have a pill.
    [[nodiscard]] QList<AgentTask> displayTasks() const;

protected:
    void resizeEvent(QResizeEvent *event) override;

private:
    void updatePills();
    void placePills();
    void tap(const QString &taskId);

    ViewContext m_context;
    std::array<AgentPill *, 4> m_pills{};
    /// A swap is under way: further taps don't count.
    bool m_swapping = false;
    Observers m_observers;
};

} // namespace tirlo
