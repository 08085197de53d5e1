#include "BotPlacement.h"

#include "core/AppState.h"
#include "island/IslandConst.h"
#include "island/IslandGeometry.h"
#include "island/IslandMotion.h"
#include "mascot/BotCanvasView.h"

#include <QPainter>

#include <algorithm>
#include <cmath>
#include <utility>

namespace tirlo {

namespace {

/// Height above the body, in points, where particles fly.
constexpr int particleOverhang = 40;
constexpr double glowSeconds = 0.4;

/// On the way of a file the mascot is another, small one: it grows out of nothing, and back.
constexpr Spring formSpring{.response = 0.36, .dampingFraction = 0.72};
constexpr double leastScale = 0.01;

} // namespace

BotPlacement::BotPlacement(const ViewContext &context, QWidget *parent)
    : QWidget(parent)
    , m_state(context.state)
    , m_clock(context.frames)
    , m_canvas(
          new BotCanvasView({context.state, context.notifications, context.sounds, context.queue,
                             context.frames, context.screens, &IslandConst::viewLayout},
                            this))
{
    setAttribute(Qt::WA_TransparentForMouseEvents);
    m_canvas->setParticleOverhang(particleOverhang);

    const MascotPlace place = IslandGeometry::mascotPlace(m_state);
    m_x.jumpTo(place.centre.x());
    m_y.jumpTo(place.centre.y());
    m_side.jumpTo(place.diameter * canvasPerDiameter);
    m_glow.moveTo(displayedState(m_state), Animation::none(), m_clock.now());
    m_canvas->setVisible(isShown());
    m_rides = rides();
    placeCanvas(m_clock.now());
    run();

    const auto moved = [this] { followPlace(); };
    const auto mood = [this] { followMood(); };
    m_observers.follow(m_state.mode, moved);
    m_observers.follow(m_state.view, moved);
    m_observers.follow(m_state.chatHistory, moved);
    m_observers.follow(m_state.uploadProgress, moved);
    m_observers.follow(m_state.isDraggingBot, moved);
    m_observers.follow(m_state.stateOverride, mood);
    m_observers.follow(m_state.focusId, mood);
    m_observers.follow(m_state.tasks, mood);
}

void BotPlacement::conceal()
{
    m_isConcealed = true;
    m_isAppearing = false;
    m_canvas->hide();
    update();
}

void BotPlacement::takeOver(const MascotPlace &from, const Animation &appearance)
{
    const double now = m_clock.now();
    m_isConcealed = false;
    m_isAppearing = true;
    m_x.jumpTo(from.centre.x());
    m_y.jumpTo(from.centre.y());
    m_side.jumpTo(from.diameter * canvasPerDiameter);
    m_opacity.jumpTo(0);
    m_opacity.animateTo(1, m_clock.permitted(appearance), now);
    followPlace();
    placeCanvas(now);
}

void BotPlacement::paintEvent(QPaintEvent *)
{
    if (!glows())
        return;
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const double time = m_clock.now();
    m_glow.paint(painter, {m_x.valueAt(time), m_y.valueAt(time)},
                 m_side.valueAt(time) / canvasPerDiameter, time);
}

void BotPlacement::followPlace()
{
    m_canvas->setVisible(isShown());
    const MascotPlace place = IslandGeometry::mascotPlace(m_state);
    const double now = m_clock.now();
    const bool changesForm = std::exchange(m_rides, rides()) != rides();
    const Animation spring
        = changesForm ? Animation::none() : m_clock.permitted(IslandMotion::openSpring);
    if (changesForm) {
        m_scale.jumpTo(leastScale);
        m_scale.animateTo(1, m_clock.permitted(formSpring), now);
    }
    m_x.animateTo(place.centre.x(), spring, now);
    m_y.animateTo(place.centre.y(), spring, now);
    m_side.animateTo(place.diameter * canvasPerDiameter, spring, now);
    run();
}

void BotPlacement::followMood()
{
    m_glow.moveTo(displayedState(m_state), m_clock.permitted(TimingCurve::easeInOut(glowSeconds)),
                  m_clock.now());
    run();
}

void BotPlacement::run()
{
    if (!m_frames.isActive())
        m_frames = m_clock.subscribe([this](double time) { frame(time); });
}

void BotPlacement::frame(double time)
{
    const QRect before = glowRect();
    placeCanvas(time);
    update(before | glowRect());
    const bool isAtRest = m_x.isAtRest(time) && m_y.isAtRest(time) && m_side.isAtRest(time)
        && m_scale.isAtRest(time) && m_glow.isAtRest(time) && m_opacity.isAtRest(time)
        && !(m_rides && rideAt(time) < 1);
    if (isAtRest)
        m_frames.reset();
    if (m_isAppearing && m_opacity.isAtRest(time)) {
        m_isAppearing = false;
        Q_EMIT appeared();
    }
}

void BotPlacement::placeCanvas(double time)
{
    const double scale = m_scale.valueAt(time);
    const double side = m_side.valueAt(time) * scale;
    const double overhang = particleOverhang * scale;
    const double x = m_rides ? IslandGeometry::uploadTrackX(rideAt(time)) : m_x.valueAt(time);
    const QRectF frame(x - side / 2, m_y.valueAt(time) - side / 2 - overhang, side,
                       side + overhang);
    m_canvas->setParticleOverhang(overhang);
    m_canvas->setGeometry(frame.toRect());
    m_canvas->setOpacity(m_state.isDraggingBot ? 0 : m_opacity.valueAt(time));
}

bool BotPlacement::rides() const
{
    return m_state.mode == IslandMode::expanded && m_state.view == IslandView::uploading;
}

/// How far along its track the mascot has come, from 0 to 1; it slows down toward the end.
double BotPlacement::rideAt(double time) const
{
    if (!m_state.uploadStartTime)
        return 0;
    const double t
        = std::clamp((time - *m_state.uploadStartTime) / m_state.uploadDuration, 0.0, 1.0);
    return t * (2 - t);
}

bool BotPlacement::isShown() const
{
    return !m_isConcealed && IslandGeometry::mascotPlace(m_state).opacity > 0;
}

bool BotPlacement::glows() const
{
    return m_state.mode == IslandMode::expanded && m_state.view != IslandView::uploading
        && isShown();
}

/// The glow's room around where the canvas is now.
QRect BotPlacement::glowRect() const
{
    const double diameter = m_canvas->width() / canvasPerDiameter;
    const int reach = int(std::ceil(BotGlow::reach(diameter))) + 1;
    const QPoint centre(m_canvas->geometry().center().x(),
                        m_canvas->geometry().bottom() - m_canvas->width() / 2);
    return {centre - QPoint(reach, reach), QSize(2 * reach, 2 * reach)};
}

} // namespace tirlo
