#pragma once

#include "core/model/AgentTask.h"
#include "ui/motion/Animated.h"
#include "ui/motion/FrameClock.h"
#include "ui/Observers.h"
#include "views/ViewContext.h"

#include <QWidget>

#include <vector>

namespace tirlo {

class MiniBotCanvasView;

/// The small mascots of the tasks that are not in focus, at the right of a compact island.
///
/// It grows out of nothing as the island becomes compact, and shrinks away after.
class CompactMiniGrid final : public QWidget
{
    Q_OBJECT

public:
    explicit CompactMiniGrid(const ViewContext &context, QWidget *parent = nullptr);

    /// The tasks without the one that has the focus by its id, at most four.
    [[nodiscard]] QList<AgentTask> others() const;

    /// Takes the place that it has on an island of that size, its own left edge at `left`.
    void placeOn(const QSizeF &island, double left);

private:
    void followMode();
    void followTasks();
    [[nodiscard]] MiniBotCanvasView *makeBot(const AgentTask &task);
    MiniBotCanvasView *takeBot(const AgentTask &task);
    void layOut();

    ViewContext m_context;
    QList<AgentTask> m_tasks;
    std::vector<MiniBotCanvasView *> m_bots;
    /// The island's size and left edge.
    QSizeF m_island;
    double m_left = 0;
    /// 0 gone, 1 wholly there.
    Animated<double> m_presence;
    FrameClock::Subscription m_frames;
    Observers m_observers;
};

} // namespace tirlo
