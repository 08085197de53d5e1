#pragma once

#include <QObject>

#include <functional>

class QMouseEvent;

namespace tirlo {

class AppState;
class IslandPanel;
class IslandStateMachine;
class MascotHover;
class Notifications;
class PointerLoop;

/// What presses on the panel mean beside what a card's own controls make of them.
///
/// Events are seen on their way and handed on unchanged.
class IslandPresses final : public QObject
{
    Q_OBJECT

public:
    struct Parts
    {
        IslandPanel &panel;
        IslandStateMachine &machine;
        MascotHover &hover;
        PointerLoop &loop;
        AppState &state;
        Notifications &notifications;
    };

    /// All parts outlive this object; `openDefault` opens the island on the view it opens on by
    /// itself.
    IslandPresses(const Parts &parts, std::function<void()> openDefault);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void pressed(QPointF local);
    void released();

    Parts m_parts;
    const std::function<void()> m_openDefault;
    /// A press began on the island and has not ended.
    bool m_pendingIslandClick = false;
};

} // namespace tirlo
