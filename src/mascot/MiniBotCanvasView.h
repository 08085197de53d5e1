#pragma once

#include "BotEngine.h"
#include "BotPictureKey.h"
#include "core/model/AgentTask.h"
#include "ui/motion/FrameClock.h"

#include <QWidget>

namespace tirlo {

/// The small mascot of one pill, in the pill's colour; it moves for as long as it is shown.
class MiniBotCanvasView : public QWidget
{
public:
    /// Queue and clock must outlive the view.
    MiniBotCanvasView(const AgentTask &task, MainQueue &queue, FrameClock &frames,
                      QWidget *parent = nullptr);

    /// Follows a change of the task that it was made for.
    void setTask(const AgentTask &task);

    [[nodiscard]] BotEngine &engine() { return m_engine; }

protected:
    void showEvent(QShowEvent *event) override;
    void hideEvent(QHideEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

private:
    void frame();

    AgentTask m_task;
    FrameClock &m_clock;
    BotEngine m_engine;
    BotPictureKey m_shown{};
    FrameClock::Subscription m_frames;
};

} // namespace tirlo
