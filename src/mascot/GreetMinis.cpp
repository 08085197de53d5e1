#include "GreetMinis.h"

#include "BotShapes.h"
#include "GreetCast.h"
#include "GreetPose.h"
#include "PainterScope.h"

#include <algorithm>
#include <cmath>

namespace tirlo {

namespace {

/// From the resting island's right edge to the middle of the grid.
constexpr double gridRight = 40;
constexpr double gridHeight = 28;
/// From one of its four places to the next.
constexpr double pitch = 16;

/// A mini on a canvas of 20 points, looking straight ahead.
constexpr BotFrame mini{.R = 6, .rx = 6.84, .ry = 5.28};
constexpr double eyeX = 2.47;
constexpr double eyeY = 0.63;
constexpr double eyeRadius = 1.38;

void drawMini(QPainter &painter, const BotColor &color)
{
    painter.fillPath(pebboPath(mini.rx, mini.ry, 0, mini.R), color.paint());
    painter.setPen(Qt::NoPen);
    painter.setBrush(PebboConst::miniInk.paint());
    for (const double side : {-1, 1})
        painter.drawEllipse(QPointF(side * eyeX, eyeY), eyeRadius, eyeRadius);
}

} // namespace

void drawMinis(QPainter &painter, const GreetCast &cast, const IslandRestingLayout &compact,
               double opacity)
{
    const double scale = std::clamp((compact.height - 4) / gridHeight, 0.0, 1.0);
    if (opacity <= 0 || scale <= 0)
        return;

    const PainterScope scope(painter);
    painter.setOpacity(painter.opacity() * opacity);
    painter.translate((greetFrame.width() + compact.width) / 2 - gridRight, compact.height / 2);
    painter.scale(scale, scale);
    const QTransform grid = painter.transform();
    const std::size_t rows = (cast.minis.size() + 1) / 2;
    for (std::size_t i = 0; i < cast.minis.size(); ++i) {
        painter.translate((double(i % 2) - 0.5) * pitch,
                          (double(i / 2) - double(rows - 1) / 2) * pitch);
        drawMini(painter, cast.minis[i]);
        painter.setTransform(grid);
    }
}

} // namespace tirlo
