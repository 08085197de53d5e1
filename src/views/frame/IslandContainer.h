#pragma once

#include "core/model/IslandView.h"
#include "island/IslandShape.h"
#include "ui/motion/Animated.h"
#include "ui/motion/FrameClock.h"
#include "ui/Observers.h"
#include "views/ViewContext.h"

#include <QWidget>

namespace tirlo {

class BotPlacement;
class CompactMiniGrid;
class CountdownBar;
class GreetingCanvasView;
class IslandContentView;
class PresenceEffect;
struct IslandRestingLayout;
struct MascotPlace;

/// The black island itself with what is on it; it moves from one size to the next.
///
/// The widget is just wide enough for the outline as drawn now, so that it clips what it holds, and
/// just high enough while it is closed. Its width is even: its middle stays where it is whatever
/// the size.
class IslandContainer final : public QWidget
{
    Q_OBJECT

public:
    explicit IslandContainer(const ViewContext &context, QWidget *parent = nullptr);

    /// The outline as drawn now.
    [[nodiscard]] const IslandShape &shape() const { return m_shape; }

    /// The card on show has not been seen until now.
    void comesIntoSight() { run(); }

Q_SIGNALS:
    void sizeChanged();

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    void followMode();
    void followView();
    void followChat();
    void followSight();
    void followSize();
    void followNotch();
    void moveTo(const IslandShape &target, const Animation &animation);
    void frame(double time);
    void show(const IslandShape &shape);
    void run();
    void clipContent();
    void showLayer(const Animation &animation);
    void layOutContent();
    void showContentAt(double time);
    [[nodiscard]] int islandHeight() const;
    void placeGreeting();
    void showGreeting();
    [[nodiscard]] IslandRestingLayout restingLayout() const;
    void dropGreeting();
    void followFold();
    [[nodiscard]] MascotPlace greetingMascot() const;

    AppState &m_state;
    CardSight &m_sight;
    FrameClock &m_clock;
    IslandContentView *m_content;
    PresenceEffect *m_contentPresence;
    GreetingCanvasView *m_greeting;
    PresenceEffect *m_greetingPresence;
    BotPlacement *m_mascot;
    CountdownBar *m_countdown;
    CompactMiniGrid *m_minis;

    IslandMode m_mode;
    qsizetype m_chatCount;
    Animated<double> m_width;
    Animated<double> m_height;
    Animated<double> m_cornerRadius;
    Animated<double> m_topRadius;
    Animated<double> m_contentOpacity{0};
    Animated<double> m_greetingOpacity{1};
    IslandShape m_shape{.width = 0, .height = 0};
    FrameClock::Subscription m_frames;
    Observers m_observers;
};

} // namespace tirlo
