#pragma once

#include "BotGlow.h"
#include "core/IslandLayout.h"
#include "core/model/BotState.h"
#include "core/model/IslandView.h"
#include "ui/motion/FrameClock.h"
#include "ui/Observers.h"
#include "views/ViewContext.h"

#include <QPixmap>
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

    /// Fades, to leave the stage to a film that has a mascot of its own.
    void conceal(const Animation &fade);

    /// Comes back where the film's mascot stands and goes from there to its own place.
    void takeOver(const MascotPlace &from, const Animation &appearance);

Q_SIGNALS:
    /// The mascot can be fully seen again.
    void appeared();

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    void followPlace();
    void followMood();
    void nameMascot();
    void run();
    void frame(double time);
    void placeCanvas(double time);
    void jumpTo(const MascotPlace &place);
    void flyTo(const MascotPlace &place);
    void changeForm();
    [[nodiscard]] bool rides() const;
    [[nodiscard]] bool isUnderWay(double time) const;
    [[nodiscard]] double rideAt(double time) const;
    [[nodiscard]] bool isLit() const;
    [[nodiscard]] double lightAt(double time) const;
    [[nodiscard]] QRect glowRect(double time) const;

    AppState &m_state;
    FrameClock &m_clock;
    BotCanvasView *m_canvas;
    BotGlow m_glow;
    /// Centre and canvas side in points, relative to the island's top-left corner.
    Animated<double> m_x;
    Animated<double> m_y;
    Animated<double> m_side;
    /// Opacity of the whole layer, and within it of the mascot in its place and of its glow.
    Animated<double> m_opacity{1};
    Animated<double> m_presence;
    Animated<double> m_light;
    Animated<double> m_scale{1};
    /// What was placed last: where, whether along with a file on its way, and in which mood.
    IslandMode m_mode;
    MascotPlace m_place;
    bool m_rides = false;
    bool m_isDragged = false;
    BotState m_mood;
    /// The glow's room as last painted; empty without one.
    QRect m_glowRect;
    /// The form that gives way to the other one, as it looked, and its shrinking share.
    QPixmap m_leaving;
    QRectF m_leavingRect;
    Animated<double> m_leavingScale{1};
    bool m_isAppearing = false;
    FrameClock::Subscription m_frames;
    Observers m_observers;
};

} // namespace tirlo
