#pragma once

#include <QObject>

class QMouseEvent;

namespace tirlo {

class AppState;
class Island;
class IslandPanel;
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
        Island &island;
        MascotHover &hover;
        PointerLoop &loop;
        AppState &state;
        Notifications &notifications;
    };

    /// All parts outlive this object.
    explicit IslandPresses(const Parts &parts);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void pressed(QPointF local);
    void released();

    Parts m_parts;
    /// A press began on the island and has not ended.
    bool m_pendingIslandClick = false;
};

} // namespace tirlo
