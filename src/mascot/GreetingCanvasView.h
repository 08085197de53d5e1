#pragma once

#include "platform/MainQueue.h"

#include <QWidget>

#include <limits>

namespace tirlo {

class Notifications;
class SoundEngine;

/// The greeting's stage: it runs from the moment it is shown, and says once when it is over.
///
/// Its times are seconds since then.
class GreetingCanvasView : public QWidget
{
    Q_OBJECT

public:
    /// All of these outlive the view.
    GreetingCanvasView(Notifications &notifications, SoundEngine &sounds, MainQueue &queue,
                       QWidget *parent = nullptr);

    /// The film time at which it was told to fold; infinite while it runs freely.
    [[nodiscard]] double foldTime() const { return m_foldTime; }

protected:
    void showEvent(QShowEvent *event) override;
    void hideEvent(QHideEvent *event) override;

private:
    void scheduleWorks();
    void cancelWorks();
    void complete();
    void interrupt();
    void hover();
    [[nodiscard]] double filmTime() const;

    Notifications &m_notifications;
    SoundEngine &m_sounds;
    MainQueue &m_queue;

    /// Media time at which the film began.
    double m_startTime = 0;
    double m_foldTime = std::numeric_limits<double>::infinity();
    bool m_greetFired = false;
    WorkItem m_soundWork1;
    WorkItem m_soundWork2;
    WorkItem m_doneWork;
};

} // namespace tirlo
