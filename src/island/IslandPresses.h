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

    /// What presses lead to.
    struct Actions
    {
        /// Opens the island on the view it opens on by itself.
        std::function<void()> openDefault;
        /// Gets the panel the keyboard, for the text field that was pressed.
        std::function<void()> takeKeyboard;
    };

    /// All parts outlive this object.
    IslandPresses(const Parts &parts, Actions actions);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void pressed(QPointF local);
    void released();

    Parts m_parts;
    const Actions m_actions;
    /// A press began on the island and has not ended.
    bool m_pendingIslandClick = false;
};

} // namespace tirlo
