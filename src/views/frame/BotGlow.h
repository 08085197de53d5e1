#pragma once

#include "core/model/BotState.h"
#include "ui/motion/Animated.h"

#include <QColor>

class QPainter;

namespace tirlo {

/// The soft light around the big mascot, in the colour of its mood.
class BotGlow
{
public:
    /// Colour and opacity of the light for the mood.
    [[nodiscard]] static QColor colorOf(BotState state);

    /// Fades to the light of the mood.
    void moveTo(BotState state, const Animation &animation, double now);

    [[nodiscard]] bool isAtRest(double time) const;

    /// Paints the light as it is at the time around a mascot of that diameter, in points.
    void paint(QPainter &painter, QPointF centre, double diameter, double time) const;

    /// How far the light of such a mascot reaches from its centre, in points.
    [[nodiscard]] static double reach(double diameter);

private:
    [[nodiscard]] QColor colorAt(double time) const;

    Animated<double> m_red{1};
    Animated<double> m_green{1};
    Animated<double> m_blue{1};
    Animated<double> m_opacity{0};
};

} // namespace tirlo
