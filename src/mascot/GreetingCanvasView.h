#pragma once

#include "GreetPose.h"
#include "platform/MainQueue.h"
#include "ui/motion/FrameClock.h"

#include <QPainterPath>
#include <QWidget>

#include <limits>

namespace tirlo {

class AppState;
class Notifications;
class SoundEngine;

/// The greeting's stage: it plays from the moment it is shown, and says once when it is over.
///
/// Told to fold, it turns into the resting island's picture and then stays until it is hidden. Its
/// times are seconds since it was shown.
class GreetingCanvasView : public QWidget
{
    Q_OBJECT

public:
    /// All of these outlive the view.
    GreetingCanvasView(AppState &state, Notifications &notifications, SoundEngine &sounds,
                       MainQueue &queue, FrameClock &frames, QWidget *parent = nullptr);

    /// Sets the form that the film folds into.
    void setResting(const IslandRestingLayout &compact) { m_compact = compact; }

    /// Sets the island's outline, in the view's coordinates; nothing is painted outside it.
    void setOutline(const QPainterPath &outline) { m_outline = outline; }

    /// The film time at which it was told to fold; infinite while it runs freely.
    [[nodiscard]] double tc() const { return m_tc; }

    /// Lets the film fade: it goes on in silence until it is hidden, and no longer folds.
    void giveWay();

    /// True from the call to fold until the view is hidden or gives way.
    [[nodiscard]] bool isFolding() const;

    /// What the view shows now, in its own coordinates.
    [[nodiscard]] GreetPose presentPose() const;

Q_SIGNALS:
    /// The fold has ended: it is done, or it was called off and the film runs on.
    void foldEnded();

protected:
    void showEvent(QShowEvent *event) override;
    void hideEvent(QHideEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

private:
    void scheduleWorks();
    void cancelWorks();
    void complete();
    void interrupt();
    void hover();
    void run();
    void frame();
    [[nodiscard]] double filmTime() const;
    [[nodiscard]] double drawnTime() const;

    AppState &m_state;
    Notifications &m_notifications;
    SoundEngine &m_sounds;
    MainQueue &m_queue;
    FrameClock &m_clock;

    IslandRestingLayout m_compact;
    QPainterPath m_outline;
    /// Media time at which the film began.
    double m_startDate = 0;
    double m_tc = std::numeric_limits<double>::infinity();
    bool m_greetFired = false;
    bool m_givesWay = false;
    WorkItem m_soundWork1;
    WorkItem m_soundWork2;
    WorkItem m_doneWork;
    FrameClock::Subscription m_frames;
};

} // namespace tirlo
