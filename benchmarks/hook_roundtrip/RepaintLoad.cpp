#include "RepaintLoad.h"

#include <QLinearGradient>
#include <QPainter>

#include <cmath>

namespace tirlo {

RepaintLoad::RepaintLoad()
    : m_canvas(720, 320, QImage::Format_ARGB32_Premultiplied)
{
    m_frames.setTimerType(Qt::PreciseTimer);
    m_frames.callOnTimeout(&m_frames, [this] { paint(); });
    m_frames.start(1000 / 60);
}

void RepaintLoad::paint()
{
    const double time = ++m_frame / 60.0;
    m_canvas.fill(Qt::transparent);
    QPainter painter(&m_canvas);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);

    QLinearGradient shade(0, 0, 0, 320);
    shade.setColorAt(0, Qt::black);
    shade.setColorAt(1, QColor(0x20, 0x24, 0x2c));
    painter.setBrush(shade);
    painter.drawRoundedRect(QRectF(40, -30, 640, 330), 36, 36);

    for (int i = 0; i < 12; ++i) {
        painter.setBrush(QColor::fromHsvF(float(i) / 12, 0.6F, 1, 0.8F));
        const double sway = std::sin(time * 3 + i) * 12;
        painter.drawEllipse(QPointF(90 + i * 48, 150 + sway), 20, 20 + sway / 4);
    }
    painter.setPen(Qt::white);
    painter.drawText(QRectF(60, 220, 600, 40), Qt::AlignCenter, QStringLiteral("npm run test"));
}

} // namespace tirlo
