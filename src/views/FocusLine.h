#pragma once

#include "core/model/AgentTask.h"
#include "ui/motion/Animated.h"
#include "ui/motion/FrameClock.h"

#include <QWidget>

#include <optional>

namespace tirlo {

class ColorDot;
class TextLabel;

/// The overview's head line: the focused task's name, where it comes from and how far it is.
///
/// Another task fades in.
class FocusLine final : public QWidget
{
    Q_OBJECT

public:
    /// The clock must outlive the line.
    explicit FocusLine(FrameClock &frames, QWidget *parent = nullptr);

    /// Without a task the line is empty.
    void setTask(const std::optional<AgentTask> &task);

private:
    void fadeIn();
    void showAt(double time);

    FrameClock &m_clock;
    ColorDot *m_dot;
    TextLabel *m_name;
    TextLabel *m_source;
    TextLabel *m_progress;
    QString m_taskId;
    Animated<double> m_opacity{1};
    FrameClock::Subscription m_frames;
};

} // namespace tirlo
