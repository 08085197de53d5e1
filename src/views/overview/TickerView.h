#pragma once

#include "core/model/AgentTask.h"
#include "ui/motion/FrameClock.h"

#include <QImage>
#include <QLabel>

#include <optional>

namespace tirlo {

class MainQueue;

/// The live line of a task: a wheel with its current step, and above it the step before.
///
/// A new step rolls in from below. While the wheel turns, further changes wait for it to settle,
/// and it goes on to the latest. The accessible name is the current step; a text of the label's own
/// would have it laid out anew at each.
class TickerView final : public QLabel
{
    Q_OBJECT

public:
    /// Queue and clock must outlive the view.
    TickerView(MainQueue &queue, FrameClock &frames, QWidget *parent = nullptr);

    /// Follows the task's steps; without a task only the placeholder shows.
    void setTask(const std::optional<AgentTask> &task);

    /// True while the wheel turns.
    [[nodiscard]] bool isTransitioning() const { return m_rollStart.has_value(); }

    /// The step on the top line once the wheel stands still, and the one below it.
    [[nodiscard]] const QString &spentStep() const { return m_rows.spent; }
    [[nodiscard]] const QString &liveStep() const { return m_rows.live; }

protected:
    bool event(QEvent *event) override;
    void showEvent(QShowEvent *event) override;
    void hideEvent(QHideEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

private:
    struct Rows
    {
        /// Position of the live step; negative without a task.
        qsizetype index = -1;
        QString spent;
        QString live;

        bool operator==(const Rows &) const = default;
    };

    [[nodiscard]] static Rows rowsOf(const std::optional<AgentTask> &task);
    void followLatest();
    void roll();
    void settle();
    void runOrRest();
    void frame();
    [[nodiscard]] bool shimmers() const;
    void drawRows(QPainter &painter, const QRect &exposed) const;
    void drawLeavingRow(QPainter &painter, double share) const;

    MainQueue &m_queue;
    FrameClock &m_clock;
    /// What shows at rest, what rolls in, and what the task says by now.
    Rows m_rows;
    Rows m_incoming;
    Rows m_latest;
    /// Media time in seconds at which the wheel set off.
    std::optional<double> m_rollStart;
    FrameClock::Subscription m_frames;
    /// The rows before their edges fade, kept between frames.
    QImage m_layer;
};

} // namespace tirlo
