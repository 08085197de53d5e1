#include "BotPlacement.h"

#include "core/AppState.h"
#include "core/IslandLayout.h"
#include "core/TaskWords.h"
#include "island/IslandMotion.h"
#include "mascot/BotCanvasView.h"
#include "ui/AccessibleRole.h"

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

/// A share that springs toward 0 or 1, without what it swings beyond.
double share(const Animated<double> &value, double time)
{
    return std::clamp(value.valueAt(time), 0.0, 1.0);
}

} // namespace

BotPlacement::BotPlacement(const ViewContext &context, QWidget *parent)
    : QWidget(parent)
    , m_state(context.state)
    , m_clock(context.frames)
    , m_canvas(new BotCanvasView({context.state, context.notifications, context.sounds,
                                  context.queue, context.frames, context.screens},
                                 this))
    , m_mode(context.state.mode)
    , m_place(IslandLayout::mascotPlace(context.state))
    , m_mood(displayedState(context.state))
{
    setAttribute(Qt::WA_TransparentForMouseEvents);
    m_canvas->setParticleOverhang(particleOverhang);
    AccessibleRole::set(*m_canvas, QAccessible::Graphic);
    nameMascot();

    jumpTo(m_place);
    m_glow.moveTo(m_mood, Animation::none(), m_clock.now());
    m_presence.jumpTo(m_place.opacity);
    m_light.jumpTo(isLit());
    m_rides = rides();
    m_isDragged = m_state.isDraggingBot;
    placeCanvas(m_clock.now());
    run();

    const auto moved = [this] { followPlace(); };
    const auto mood = [this] { followMood(); };
    m_observers.follow(m_state.mode, moved);
    m_observers.follow(m_state.view, moved);
    m_observers.follow(m_state.chatHistory, moved);
    m_observers.follow(m_state.cardGrowth, moved);
    m_observers.follow(m_state.uploadProgress, moved);
    m_observers.follow(m_state.uploadStartTime, [this] { run(); });
    m_observers.follow(m_state.isDraggingBot, moved);
    m_observers.follow(m_state.stateOverride, mood);
    m_observers.follow(m_state.focusId, mood);
    m_observers.follow(m_state.tasks, mood);
}

void BotPlacement::conceal(const Animation &fade)
{
    const double now = m_clock.now();
    m_isAppearing = false;
    // What is not there must not come while it goes.
    if (share(m_presence, now) > 0)
        m_opacity.animateTo(0, m_clock.permitted(fade), now);
    else
        m_opacity.jumpTo(0);
    placeCanvas(now);
    run();
}

void BotPlacement::takeOver(const MascotPlace &from, const Animation &appearance)
{
    const double now = m_clock.now();
    m_isAppearing = true;
    jumpTo(from);
    m_opacity.animateTo(1, m_clock.permitted(appearance), now);
    followPlace();
    flyTo(m_place);
    placeCanvas(now);
    run();
}

void BotPlacement::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    const double time = m_clock.now();
    if (!m_leaving.isNull()) {
        painter.setRenderHint(QPainter::SmoothPixmapTransform);
        const double scale = std::max(m_leavingScale.valueAt(time), 0.0);
        const QPointF body(m_leavingRect.center().x(),
                           m_leavingRect.bottom() - m_leavingRect.width() / 2);
        const QRectF target(body + (m_leavingRect.topLeft() - body) * scale,
                            m_leavingRect.size() * scale);
        painter.drawPixmap(target, m_leaving, m_leaving.rect());
    }
    const double light = lightAt(time);
    if (light <= 0)
        return;
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setOpacity(light);
    m_glow.paint(painter, {m_x.valueAt(time), m_y.valueAt(time)},
                 m_side.valueAt(time) / IslandLayout::canvasPerDiameter, time);
}

void BotPlacement::followPlace()
{
    const MascotPlace place = IslandLayout::mascotPlace(m_state);
    const Animation change
        = IslandMotion::forChange(std::exchange(m_mode, m_state.mode.value()), m_state.mode);
    const bool isDragged = m_state.isDraggingBot;
    const bool changesForm = rides() != m_rides;
    if (place == m_place && isDragged == m_isDragged && !changesForm
        && isLit() == (m_light.target() > 0))
        return;
    m_presence.animateTo(place.opacity, m_clock.permitted(change), m_clock.now());
    m_light.animateTo(isLit(), m_clock.permitted(change), m_clock.now());
    m_place = place;
    m_isDragged = isDragged;
    m_rides = rides();
    if (changesForm)
        changeForm();
    else
        flyTo(place);
    run();
}

void BotPlacement::followMood()
{
    nameMascot();
    const BotState mood = displayedState(m_state);
    if (mood == std::exchange(m_mood, mood))
        return;
    // A light that nobody sees need not fade.
    m_glow.moveTo(
        mood, isLit() ? m_clock.permitted(TimingCurve::easeInOut(glowSeconds)) : Animation::none(),
        m_clock.now());
    run();
}

/// The mascot stands for the agent in focus.
void BotPlacement::nameMascot()
{
    const std::optional<AgentTask> task = m_state.focusTask();
    AccessibleRole::setName(*m_canvas,
                            task ? inWords(*task)
                                 : QStringLiteral("Tirlo, ") + inWords(displayedState(m_state)));
}

void BotPlacement::jumpTo(const MascotPlace &place)
{
    m_x.jumpTo(place.centre.x());
    m_y.jumpTo(place.centre.y());
    m_side.jumpTo(place.diameter * IslandLayout::canvasPerDiameter);
}

void BotPlacement::flyTo(const MascotPlace &place)
{
    const Animation spring = m_clock.permitted(IslandMotion::openSpring);
    const double now = m_clock.now();
    m_x.animateTo(place.centre.x(), spring, now);
    m_y.animateTo(place.centre.y(), spring, now);
    m_side.animateTo(place.diameter * IslandLayout::canvasPerDiameter, spring, now);
}

/// Lets the form shown so far shrink away where it is, while the other grows in its own place.
void BotPlacement::changeForm()
{
    const Animation spring = m_clock.permitted(formSpring);
    const double now = m_clock.now();
    update(m_leavingRect.toAlignedRect());
    m_leaving = {};
    if (m_canvas->isVisible() && spring != Animation::none()) {
        const double ratio = devicePixelRatioF();
        m_leaving = QPixmap((QSizeF(m_canvas->size()) * ratio).toSize());
        m_leaving.setDevicePixelRatio(ratio);
        m_leaving.fill(Qt::transparent);
        m_canvas->render(&m_leaving, {}, {}, RenderFlags());
        m_leavingRect = m_canvas->geometry();
        m_leavingScale.jumpTo(1);
        m_leavingScale.animateTo(leastScale, spring, now);
    }
    m_light.jumpTo(isLit());
    m_scale.jumpTo(leastScale);
    m_scale.animateTo(1, spring, now);
    jumpTo(m_place);
    placeCanvas(now);
}

void BotPlacement::run()
{
    if (!m_frames.isActive())
        m_frames = m_clock.subscribe([this](double time) { frame(time); });
}

void BotPlacement::frame(double time)
{
    placeCanvas(time);
    if (!m_leaving.isNull()) {
        update(m_leavingRect.toAlignedRect());
        if (m_leavingScale.valueAt(time) <= leastScale)
            m_leaving = {};
    }
    const bool isLightSeen = lightAt(time) > 0 || (m_light.target() > 0 && m_opacity.target() > 0);
    const QRect glow = isLightSeen ? glowRect(time) : QRect();
    update(glow | std::exchange(m_glowRect, glow));
    if (!isUnderWay(time))
        m_frames.reset();
    if (m_isAppearing && m_opacity.isAtRest(time)) {
        m_isAppearing = false;
        Q_EMIT appeared();
    }
}

bool BotPlacement::isUnderWay(double time) const
{
    const bool isAtRest = m_x.isAtRest(time) && m_y.isAtRest(time) && m_side.isAtRest(time)
        && m_scale.isAtRest(time) && m_glow.isAtRest(time) && m_opacity.isAtRest(time)
        && m_presence.isAtRest(time) && m_light.isAtRest(time);
    const bool goesAlong = m_rides && m_state.uploadStartTime.value() && rideAt(time) < 1;
    return !isAtRest || goesAlong || !m_leaving.isNull();
}

void BotPlacement::placeCanvas(double time)
{
    const double scale = m_scale.valueAt(time);
    const double side = m_side.valueAt(time) * scale;
    const double overhang = particleOverhang * scale;
    const double x = m_rides ? IslandLayout::uploadTrackX(rideAt(time)) : m_x.valueAt(time);
    const QRectF frame(x - side / 2, m_y.valueAt(time) - side / 2 - overhang, side,
                       side + overhang);
    m_canvas->setParticleOverhang(overhang);
    m_canvas->setGeometry(frame.toRect());
    const double opacity = share(m_opacity, time) * share(m_presence, time);
    m_canvas->setOpacity(m_state.isDraggingBot ? 0 : opacity);
    m_canvas->setVisible(opacity > 0 || (m_opacity.target() > 0 && m_presence.target() > 0));
}

bool BotPlacement::rides() const
{
    return m_state.mode == IslandMode::expanded && m_state.view == IslandView::uploading;
}

/// How far along its track the mascot has come, from 0 to 1; it slows down toward the end.
double BotPlacement::rideAt(double time) const
{
    const auto start = m_state.uploadStartTime.value();
    if (!start)
        return 0;
    if (!(m_state.uploadDuration > 0))
        return 1;
    const double t = std::clamp((time - *start) / m_state.uploadDuration, 0.0, 1.0);
    return t * (2 - t);
}

bool BotPlacement::isLit() const
{
    return m_state.mode == IslandMode::expanded && m_state.view != IslandView::uploading
        && m_state.view != IslandView::greeting;
}

/// How much of the glow is there, from 0 to 1.
double BotPlacement::lightAt(double time) const
{
    return share(m_light, time) * share(m_opacity, time);
}

/// The glow's room at that time.
QRect BotPlacement::glowRect(double time) const
{
    const double reach = BotGlow::reach(m_side.valueAt(time) / IslandLayout::canvasPerDiameter) + 1;
    const QPointF centre(m_x.valueAt(time), m_y.valueAt(time));
    return QRectF(centre - QPointF(reach, reach), QSizeF(2 * reach, 2 * reach)).toAlignedRect();
}

} // namespace tirlo
