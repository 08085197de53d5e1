#pragma once

#include "PillPresence.h"
#include "core/model/AgentTask.h"
#include "ui/motion/FrameClock.h"
#include "ui/Observers.h"
#include "views/ViewContext.h"

#include <QWidget>

#include <vector>

namespace tirlo {

/// The pills of the tasks that are not in focus, at most four; a tap moves the focus.
///
/// A task keeps its pill for as long as it has one, whatever else changes.
class AgentPillsView final : public QWidget
{
    Q_OBJECT

public:
    explicit AgentPillsView(const ViewContext &context, QWidget *parent = nullptr);

    /// The tasks that have a pill, in the store's order.
    [[nodiscard]] QList<AgentTask> displayTasks() const;

protected:
    void resizeEvent(QResizeEvent *event) override;

private:
    void followTasks();
    void placePills(const QList<AgentTask> &tasks, bool moves);
    void followOrder(const QList<AgentTask> &tasks);
    bool showAt(double time);
    PillPresence &presenceOf(const AgentTask &task);
    [[nodiscard]] QRect cell(int index, int count) const;
    void tap(const QString &taskId);

    ViewContext m_context;
    /// Those that are going included.
    std::vector<PillPresence> m_pills;
    /// As the keyboard goes through them.
    QStringList m_order;
    FrameClock::Subscription m_frames;
    /// A swap is under way: further taps don't count.
    bool m_swapping = false;
    Observers m_observers;
};

} // namespace tirlo
