#include "MiniBotCanvasView.h"

#include "BotDrawing.h"

#include <QPainter>

#include <algorithm>

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

void MiniBotCanvasView::setOpacity(double opacity)
{
    if (opacity == m_opacity)
        return;
    m_opacity = opacity;
    update();
}

void MiniBotCanvasView::setMagnification(double magnification)
{
    if (magnification == m_magnification)
        return;
    m_magnification = magnification;
    update();
}

void MiniBotCanvasView::setBrightness(double amount)
{
    auto body = cgColorFromHex(m_task.color);
    if (body) {
        for (double *component : {&body->red, &body->green, &body->blue})
            *component = std::min(*component + amount, 1.0);
    }
    if (body == m_engine.bodyColor)
        return;
    m_engine.bodyColor = body;
    update();
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
    painter.setOpacity(m_opacity);
    const QPointF centre = QRectF(rect()).center();
    painter.translate(centre);
    painter.scale(m_magnification, m_magnification);
    painter.translate(-centre);
    draw(painter, m_engine, size());
}

} // namespace tirlo
