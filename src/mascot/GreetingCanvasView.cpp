#include "GreetingCanvasView.h"

#include "GreetCast.h"
#include "GreetDrawing.h"
#include "core/Notifications.h"
#include "core/SoundEngine.h"

#include <QHideEvent>
#include <QPainter>
#include <QShowEvent>

#include <cmath>

namespace tirlo {

namespace {

constexpr double never = std::numeric_limits<double>::infinity();

constexpr double firstSoundTime = 1.36;
constexpr double secondSoundTime = 2.72;
constexpr double endTime = 4.65;
/// By now somebody has to stand ready to say that the film is over.
constexpr double safetyTime = 4.6;
/// A fold that was asked for this late comes by itself: a pointer that enters calls it off.
constexpr double lateFoldTime = 4.9;
/// The one picture shown where nothing may move: burst and wave are over, the mascot looks ahead.
constexpr double stillTime = 4.2;

} // namespace

GreetingCanvasView::GreetingCanvasView(AppState &state, Notifications &notifications,
                                       SoundEngine &sounds, MainQueue &queue, FrameClock &frames,
                                       QWidget *parent)
    : QWidget(parent)
    , m_state(state)
    , m_notifications(notifications)
    , m_sounds(sounds)
    , m_queue(queue)
    , m_clock(frames)
{
    setAttribute(Qt::WA_TransparentForMouseEvents);
    resize(greetFrame.toSize());
    connect(&notifications, &Notifications::greetingInterrupt, this,
            &GreetingCanvasView::interrupt);
    connect(&notifications, &Notifications::greetingHover, this, &GreetingCanvasView::hover);
}

void GreetingCanvasView::giveWay()
{
    m_givesWay = true;
    m_soundWork1.cancel();
    m_soundWork2.cancel();
}

bool GreetingCanvasView::isFolding() const
{
    return isVisible() && !m_givesWay && std::isfinite(m_tc);
}

GreetPose GreetingCanvasView::presentPose() const
{
    return pose(drawnTime(), m_tc, m_compact);
}

void GreetingCanvasView::showEvent(QShowEvent *event)
{
    // The window system's own hiding and showing is no new start.
    if (event->spontaneous())
        return;
    m_startDate = m_queue.mediaTime();
    m_tc = never;
    m_greetFired = false;
    m_givesWay = false;
    cancelWorks();
    scheduleWorks();
    run();
}

void GreetingCanvasView::hideEvent(QHideEvent *event)
{
    if (event->spontaneous())
        return;
    // Another card took the film's place; the greeting ends at its time all the same, or nothing
    // would ever close the island.
    m_soundWork1.cancel();
    m_soundWork2.cancel();
    m_frames.reset();
}

void GreetingCanvasView::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setClipPath(m_outline);
    drawGreeting(painter, size(), drawnTime(), m_tc, m_compact, greetCast(m_state));
}

void GreetingCanvasView::scheduleWorks()
{
    m_soundWork1
        = m_queue.after(firstSoundTime, this, [this] { m_sounds.play(QStringLiteral("greet")); });
    m_soundWork2
        = m_queue.after(secondSoundTime, this, [this] { m_sounds.play(QStringLiteral("blip")); });
    m_doneWork = m_queue.after(endTime, this, [this] { complete(); });
}

void GreetingCanvasView::cancelWorks()
{
    for (WorkItem *item : {&m_soundWork1, &m_soundWork2, &m_doneWork})
        item->cancel();
}

void GreetingCanvasView::complete()
{
    if (m_greetFired)
        return;
    m_greetFired = true;
    cancelWorks();
    Q_EMIT m_notifications.greetComplete();
}

void GreetingCanvasView::interrupt()
{
    if (!isVisible() || m_givesWay)
        return;
    cancelWorks();
    const double t = filmTime();
    if (t >= m_tc)
        return;
    m_tc = t;
    run();
}

void GreetingCanvasView::hover()
{
    if (!isFolding() || m_tc < lateFoldTime)
        return;
    m_tc = never;
    run();
    Q_EMIT foldEnded();
}

void GreetingCanvasView::run()
{
    if (!m_frames.isActive())
        m_frames = m_clock.subscribe([this](double) { frame(); });
}

void GreetingCanvasView::frame()
{
    const double t = filmTime();
    update();
    if (t >= m_tc) {
        const double length = m_clock.reducesMotion() ? 0 : greetFoldTime;
        if (t < m_tc + length)
            return;
        m_frames.reset();
        return Q_EMIT foldEnded();
    }

    // A fold that was called off took the film's end with it.
    const bool isOverdue = t >= safetyTime && m_tc >= lateFoldTime;
    if (isOverdue && !m_doneWork.isPending())
        complete();
    if (m_greetFired)
        m_frames.reset();
}

double GreetingCanvasView::filmTime() const
{
    return m_queue.mediaTime() - m_startDate;
}

/// The film time of the picture, which skips to the end of a motion that may not be shown.
double GreetingCanvasView::drawnTime() const
{
    const double t = filmTime();
    if (!m_clock.reducesMotion())
        return t;
    return t < m_tc ? stillTime : m_tc + greetFoldTime;
}

} // namespace tirlo
