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

    /// Sets the opacity of the whole picture, from 0 to 1.
    void setOpacity(double opacity);

    /// Sets the scale of the mascot about the canvas's middle; 1 fills the canvas as told.
    void setMagnification(double magnification);

    /// Adds the amount, 0 to 1, to each component of the body's own colour.
    void setBrightness(double amount);

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
    double m_opacity = 1;
    double m_magnification = 1;
    FrameClock::Subscription m_frames;
};

} // namespace tirlo
