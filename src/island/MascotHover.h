#pragma once

#include "platform/MainQueue.h"

#include <QObject>
#include <QPointF>

namespace tirlo {

class AppState;
class Notifications;
class SoundEngine;

/// What the mascot does while the pointer rests on it: a blink at once, and a heart after a while.
class MascotHover final : public QObject
{
    Q_OBJECT

public:
    /// All of these outlive the hover.
    MascotHover(AppState &state, Notifications &notifications, SoundEngine &sounds,
                MainQueue &queue);

    /// Called on every frame; `isOver` is whether the pointer is on the mascot, `pointer` where it
    /// is on the desktop, in points.
    void update(bool isOver, QPointF pointer);

    /// Forgets the present hover, as a press does.
    void cancel();

private:
    void botHoverIn(QPointF pointer);
    void scheduleLoveTimer();
    void love();
    [[nodiscard]] bool isLoveDue() const;

    AppState &m_state;
    Notifications &m_notifications;
    SoundEngine &m_sounds;
    MainQueue &m_queue;

    bool m_hovering = false;
    QPointF m_startPosition;
    /// Media time of the last heart.
    double m_lastLoveTime = 0;
    WorkItem m_loveTimer;
};

} // namespace tirlo
