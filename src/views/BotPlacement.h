#pragma once

#include "BotGlow.h"
#include "ViewContext.h"
#include "ui/motion/FrameClock.h"
#include "ui/Observers.h"

#include <QWidget>

namespace tirlo {

class BotCanvasView;

/// Keeps the big mascot in its place on the island; it flies from one place to the next.
///
/// The layer lies over everything else on the island and lets the pointer through.
class BotPlacement final : public QWidget
{
    Q_OBJECT

public:
    explicit BotPlacement(const ViewContext &context, QWidget *parent = nullptr);

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    void followPlace();
    void followMood();
    void run();
    void frame(double time);
    void placeCanvas(double time);
    [[nodiscard]] bool glows() const;
    [[nodiscard]] QRect glowRect() const;

    AppState &m_state;
    FrameClock &m_clock;
    BotCanvasView *m_canvas;
    BotGlow m_glow;
    /// Centre and canvas side in points, relative to the island's top-left corner.
    Animated<double> m_x;
    Animated<double> m_y;
    Animated<double> m_side;
    FrameClock::Subscription m_frames;
    Observers m_observers;
};

} // namespace tirlo
