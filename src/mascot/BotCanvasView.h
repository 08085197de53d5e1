#pragma once

#include "BotEngine.h"
#include "BotPictureKey.h"
#include "ui/motion/FrameClock.h"

#include <QPropertyNotifier>
#include <QWidget>

namespace tirlo {

class AppState;
class Notifications;
class Screens;
class SoundEngine;

/// What a big mascot needs of the program; all of it outlives the mascot.
struct BotSurroundings
{
    AppState &state;
    Notifications &notifications;
    SoundEngine &sounds;
    MainQueue &queue;
    FrameClock &frames;
    const Screens &screens;
};

/// The mood that the big mascot shows: an imposed one, else the focused task's, else idle.
[[nodiscard]] BotState displayedState(const AppState &state);

/// The one big mascot: it follows the store, the pointer and the notifications.
///
/// Its body's diameter is 0.6 of its width. It stands still while the island is hidden and repaints
/// only when its picture has changed.
class BotCanvasView : public QWidget
{
public:
    explicit BotCanvasView(const BotSurroundings &surroundings, QWidget *parent = nullptr);

    /// Sets the height in points that the canvas keeps above the body for particles.
    void setParticleOverhang(double points) { m_particleOverhang = points; }

    /// Sets the opacity of the whole picture, from 0 to 1.
    void setOpacity(double opacity);

    [[nodiscard]] BotEngine &engine() { return m_engine; }

protected:
    void showEvent(QShowEvent *event) override;
    void hideEvent(QHideEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

private:
    void connectNotifications();
    void followState();
    void followView();
    void followMode();
    void runOrPause();
    void frame();
    void feedEngine();
    void feedSlot();
    void morphTo(double target, double milliseconds);

    BotSurroundings m_around;
    BotEngine m_engine;
    double m_particleOverhang = 0;
    double m_opacity = 1;
    BotPictureKey m_shown{};
    bool m_hasAppeared = false;
    FrameClock::Subscription m_frames;
    std::array<QPropertyNotifier, 5> m_notifiers;
};

} // namespace tirlo
