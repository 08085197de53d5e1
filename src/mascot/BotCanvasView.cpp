#include "BotCanvasView.h"

#include "BotDrawing.h"
#include "BotGaze.h"
#include "core/AppState.h"
#include "core/Notifications.h"
#include "core/SoundEngine.h"

#include <QPainter>

#include <utility>

namespace tirlo {

namespace {

constexpr double emoteDuration = 1.8;
constexpr double viewMorphTime = 550;
/// The box unfolds from here on.
constexpr double slotMorph = 0.3;

BotHooks hooksInto(const BotSurroundings &around)
{
    return {.playSound = [&sounds = around.sounds](QLatin1String name) { sounds.play(name); },
            .becameDizzy
            = [&notifications = around.notifications] { Q_EMIT notifications.botDizzy(); }};
}

} // namespace

BotState displayedState(const AppState &state)
{
    if (const auto imposed = state.stateOverride.value())
        return *imposed;
    const auto task = state.focusTask();
    return task ? task->state : BotState::idle;
}

BotCanvasView::BotCanvasView(const BotSurroundings &surroundings, QWidget *parent)
    : QWidget(parent)
    , m_around(surroundings)
    , m_engine(surroundings.queue, systemUniform, hooksInto(surroundings))
{
    setAttribute(Qt::WA_TransparentForMouseEvents);
    setFocusPolicy(Qt::NoFocus);

    AppState &state = m_around.state;
    m_notifiers = {state.stateOverride.addNotifier([this] { followState(); }),
                   state.focusId.addNotifier([this] { followState(); }),
                   state.tasks.addNotifier([this] { followState(); }),
                   state.view.addNotifier([this] { followView(); }),
                   state.mode.addNotifier([this] { followMode(); })};
    connectNotifications();
}

void BotCanvasView::setOpacity(double opacity)
{
    if (opacity == m_opacity)
        return;
    m_opacity = opacity;
    update();
}

void BotCanvasView::connectNotifications()
{
    Notifications *centre = &m_around.notifications;
    connect(centre, &Notifications::triggerEmote, this,
            [this](BotEmote emote) { m_engine.triggerEmote(emote, emoteDuration); });
    connect(centre, &Notifications::triggerSlap, this, [this] { m_engine.slap(); });
    connect(centre, &Notifications::botBlink, this, [this] { m_engine.blink(); });
    connect(centre, &Notifications::botSetTgEs, this,
            [this](double scale) { m_engine.tgEs = scale; });
    connect(centre, &Notifications::botGulp, this, [this] { m_engine.gulp(); });
    connect(centre, &Notifications::botMorphTo, this,
            [this](double morph) { morphTo(morph, morph > 0.5 ? 550 : 650); });
    connect(centre, &Notifications::botGreet, this, [this] { m_engine.greet(); });
}

void BotCanvasView::morphTo(double target, double milliseconds)
{
    m_engine.startTween(BotProperty::morph, {{target, milliseconds, easeInOutCubic}});
}

void BotCanvasView::followState()
{
    if (isVisible())
        m_engine.setState(displayedState(m_around.state), false);
}

void BotCanvasView::followView()
{
    const IslandView view = m_around.state.view;
    if (view == IslandView::upload && m_around.state.mode == IslandMode::expanded)
        return morphTo(1, viewMorphTime);
    // The box keeps its form through the upload that follows.
    if (view == IslandView::upload || view == IslandView::uploading)
        return;
    if (m_engine.morph > 0.01)
        morphTo(0, viewMorphTime);
}

void BotCanvasView::followMode()
{
    if (m_around.state.mode != IslandMode::expanded) {
        m_engine.tweens.remove(BotProperty::morph);
        m_engine.morph = 0;
        update();
    }
    runOrPause();
}

void BotCanvasView::runOrPause()
{
    if (!isVisible() || m_around.state.mode == IslandMode::hidden)
        return m_frames.reset();
    if (!m_frames.isActive())
        m_frames = m_around.frames.subscribe([this](double) { frame(); });
}

void BotCanvasView::showEvent(QShowEvent *)
{
    // Only the first appearance starts a state anew: an island that peeks again is no news.
    m_engine.setState(displayedState(m_around.state), !std::exchange(m_hasAppeared, true));
    feedEngine();
    runOrPause();
}

void BotCanvasView::hideEvent(QHideEvent *)
{
    m_frames.reset();
}

void BotCanvasView::frame()
{
    feedEngine();
    m_engine.update(BotEngine::frameStep);
    // Only now, so that the pull of a gulp acts for the one frame that follows it.
    feedSlot();

    const BotPictureKey key = pictureKey(m_engine);
    if (key == m_shown)
        return;
    m_shown = key;
    update();
}

void BotCanvasView::feedEngine()
{
    const AppState &state = m_around.state;
    const QPointF gaze = gazeAtPointer(state, m_around.screens);
    m_engine.lookX = gaze.x();
    m_engine.lookY = gaze.y();
    m_engine.particleOverhang = m_particleOverhang;

    const auto task = state.focusTask();
    m_engine.bodyColor = task && task->isIntegration ? cgColorFromHex(task->color) : std::nullopt;
}

void BotCanvasView::feedSlot()
{
    const bool asks = m_engine.morph > slotMorph && m_around.state.fileDragOver;
    m_engine.slotHTarget = asks ? 0.2 : 0;
    if (m_engine.morph < 0.05) {
        m_engine.slotH = 0;
        m_engine.slotHVel = 0;
    }
}

void BotCanvasView::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.setOpacity(m_opacity);
    drawHandsBehind(painter, m_engine, size());
    draw(painter, m_engine, size());
    drawHandsAndExtras(painter, m_engine, size());
}

} // namespace tirlo
