#include "MiniBotCanvasView.h"

#include "BotDrawing.h"

#include <QPainter>

namespace tirlo {

MiniBotCanvasView::MiniBotCanvasView(const AgentTask &task, MainQueue &queue, FrameClock &frames,
                                     QWidget *parent)
    : QWidget(parent)
    , m_task(task)
    , m_clock(frames)
    , m_engine(queue)
{
    setAttribute(Qt::WA_TransparentForMouseEvents);
    setFocusPolicy(Qt::NoFocus);
    m_engine.isMini = true;
    m_engine.bodyColor = cgColorFromHex(task.color);
}

void MiniBotCanvasView::setTask(const AgentTask &task)
{
    m_task = task;
    if (isVisible())
        m_engine.setState(task.state, false);
}

void MiniBotCanvasView::showEvent(QShowEvent *)
{
    m_engine.setState(m_task.state, true);
    if (m_task.emote)
        m_engine.setPermanentEmote(m_task.emote);
    if (m_task.miniEye) {
        m_engine.permanentEye = m_task.miniEye;
        m_engine.eyeOverride = m_task.miniEye;
        m_engine.eyeOverrideUntil = BotEngine::forever;
    }
    m_frames = m_clock.subscribe([this](double) { frame(); });
}

void MiniBotCanvasView::hideEvent(QHideEvent *)
{
    m_frames.reset();
}

void MiniBotCanvasView::frame()
{
    m_engine.update(BotEngine::frameStep);
    const BotPictureKey key = pictureKey(m_engine);
    if (key == m_shown)
        return;
    m_shown = key;
    update();
}

void MiniBotCanvasView::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    draw(painter, m_engine, size());
}

} // namespace tirlo
