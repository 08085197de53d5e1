#pragma once

#include "platform/Pointer.h"

#include <QObject>

namespace tirlo {

class AppState;
class FrameDriver;
class Island;
class IslandPanel;
class MascotHover;

/// Polls the pointer 60 times a second and tells the island's parts what it does there.
///
/// Nothing is delivered to a window that lets the pointer through, so the position is polled. A
/// tick allocates nothing and writes nothing that has not changed.
class PointerLoop final : public QObject
{
    Q_OBJECT

public:
    struct Parts
    {
        IslandPanel &panel;
        Island &island;
        MascotHover &hover;
        AppState &state;
    };

    /// All parts outlive the loop, which takes the driver's onFrame for itself.
    PointerLoop(const Parts &parts, const Pointer &pointer, FrameDriver &driver);
    ~PointerLoop() override;

    /// Begins to poll; it goes on for the life of the loop.
    void startPolling();

    /// One tick; also called ahead of its time where an event needs the present position.
    void pollFrame();

    /// Whether the pointer was on the island at the last tick.
    [[nodiscard]] bool wasInIsland() const { return m_wasInIsland; }

private:
    [[nodiscard]] bool isInHitArea(QPointF local) const;
    void publish(QPointF position);
    void followEdge(bool inside);
    [[nodiscard]] bool isOverMascot(QPointF local) const;

    Parts m_parts;
    const Pointer &m_pointer;
    FrameDriver &m_driver;
    bool m_wasInIsland = false;
};

} // namespace tirlo
