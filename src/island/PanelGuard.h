#pragma once

#include "platform/MainQueue.h"
#include "platform/PanelWindow.h"
#include "ui/Observers.h"

#include <QObject>

#include <deque>

namespace tirlo {

class AppState;
class IslandPanel;

/// Keeps the panel as it has to be whatever others do to it: at its place, in its size, and in
/// front while there is something on it to be seen.
///
/// It insists a few times in a while and then lets go: of two that both insist neither would rest.
class PanelGuard final : public QObject
{
    Q_OBJECT

public:
    /// All of these outlive the guard.
    PanelGuard(IslandPanel &panel, PanelWindow &window, AppState &state, MainQueue &queue);

    /// Brings the panel to the front at once if something lies over it.
    void bringForward();

Q_SIGNALS:
    /// The panel was covered and is in front again.
    void uncovered();

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void bringForwardSoon();
    void holdPlace();
    [[nodiscard]] bool mayInsist();

    IslandPanel &m_panel;
    PanelWindow &m_window;
    AppState &m_state;
    MainQueue &m_queue;

    WorkItem m_look;
    WorkItem m_hold;
    /// Media times of the last deeds.
    std::deque<double> m_deeds;
    Observers m_observers;
};

} // namespace tirlo
