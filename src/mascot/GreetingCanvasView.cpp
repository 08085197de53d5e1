#include "GreetingCanvasView.h"

#include "SoundEngine.h"
#include "core/Notifications.h"

#include <cmath>

namespace tirlo {

namespace {

constexpr double firstSoundTime = 1.36;
constexpr double secondSoundTime = 2.72;
constexpr double endTime = 4.65;
/// A fold that was asked for this late comes by itself: a pointer that enters calls it off.
constexpr double lateFoldTime = 4.9;

} // namespace

GreetingCanvasView::GreetingCanvasView(Notifications &notifications, SoundEngine &sounds,
                                       MainQueue &queue, QWidget *parent)
    : QWidget(parent)
    , m_notifications(notifications)
    , m_sounds(sounds)
    , m_queue(queue)
{
    setAttribute(Qt::WA_TransparentForMouseEvents);
    connect(&notifications, &Notifications::greetingInterrupt, this,
            &GreetingCanvasView::interrupt);
    connect(&notifications, &Notifications::greetingHover, this, &GreetingCanvasView::hover);
}

void GreetingCanvasView::showEvent(QShowEvent *)
{
    m_startTime = m_queue.mediaTime();
    m_foldTime = std::numeric_limits<double>::infinity();
    m_greetFired = false;
    scheduleWorks();
}

void GreetingCanvasView::hideEvent(QHideEvent *)
{
    cancelWorks();
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
    if (!std::isfinite(m_foldTime) || filmTime() < m_foldTime)
        m_foldTime = filmTime();
    cancelWorks();
}

void GreetingCanvasView::hover()
{
    if (m_foldTime >= lateFoldTime)
        m_foldTime = std::numeric_limits<double>::infinity();
}

double GreetingCanvasView::filmTime() const
{
    return m_queue.mediaTime() - m_startTime;
}

} // namespace tirlo
