#include "BotGlow.h"

#include "ui/Bands.h"
#include "ui/Color.h"
#include "views/StateColor.h"

#include <QPainter>
#include <QRadialGradient>

#include <cmath>
#include <numbers>

namespace tirlo {

namespace {

/// Where the light has faded out, as a share of its radius.
constexpr double clearStop = 0.62;
/// Enough to read as one smooth fall, where a straight one shows its tip and its edge.
constexpr int fallSteps = 8;

double opacityOf(BotState state)
{
    switch (state) {
    case BotState::idle:
    case BotState::sleeping:
        return 0.15;
    case BotState::dizzy:
        return 0;
    default:
        return 0.65;
    }
}

} // namespace

QColor BotGlow::colorOf(BotState state)
{
    return withOpacity(stateColor(state), opacityOf(state));
}

void BotGlow::moveTo(BotState state, const Animation &animation, double now)
{
    const QColor color = colorOf(state);
    m_red.animateTo(color.redF(), animation, now);
    m_green.animateTo(color.greenF(), animation, now);
    m_blue.animateTo(color.blueF(), animation, now);
    m_opacity.animateTo(color.alphaF(), animation, now);
}

bool BotGlow::isAtRest(double time) const
{
    return m_red.isAtRest(time) && m_green.isAtRest(time) && m_blue.isAtRest(time)
        && m_opacity.isAtRest(time);
}

void BotGlow::paint(QPainter &painter, QPointF centre, double diameter, double time) const
{
    const QColor color = colorAt(time);
    if (color.alpha() == 0)
        return;
    const double radius = reach(diameter);
    QRadialGradient gradient(centre, radius);
    for (int i = 0; i <= fallSteps; ++i) {
        const double share = double(i) / fallSteps;
        const double light = 0.5 + 0.5 * std::cos(std::numbers::pi * share);
        gradient.setColorAt(share * clearStop, withOpacity(color, color.alphaF() * light));
    }
    const QRectF room(centre.x() - radius, centre.y() - radius, 2 * radius, 2 * radius);
    fillInBands(painter, room.toAlignedRect(), gradient);
}

double BotGlow::reach(double diameter)
{
    return diameter * 1.1;
}

QColor BotGlow::colorAt(double time) const
{
    const auto channel = [time](const Animated<double> &value) {
        return float(std::clamp(value.valueAt(time), 0.0, 1.0));
    };
    return QColor::fromRgbF(channel(m_red), channel(m_green), channel(m_blue), channel(m_opacity));
}

} // namespace tirlo
