#include "TickerShimmerText.h"

#include "ui/Style.h"
#include "ui/TextLine.h"

#include <QLinearGradient>
#include <QPainter>

#include <cmath>

namespace tirlo::TickerShimmerText {

namespace {

constexpr double sweepSeconds = 2.2;
/// Half the light's width, as a share of the text's; it starts and ends that far off the text.
constexpr double halfWidth = 0.1;

QLinearGradient lightOver(double left, double width, double time)
{
    const double sweep = std::fmod(time, sweepSeconds) / sweepSeconds;
    const double centre = sweep * (1 + 2 * halfWidth) - halfWidth;
    QLinearGradient light(left + (centre - halfWidth) * width, 0,
                          left + (centre + halfWidth) * width, 0);
    light.setColorAt(0, Style::shimmerText);
    light.setColorAt(0.5, Style::liveText);
    light.setColorAt(1, Style::shimmerText);
    return light;
}

} // namespace

void draw(QPainter &painter, const QRectF &rect, const QString &line, double time)
{
    const TextLine::Shaped &shown
        = TextLine::fitted(line, painter.font(), Qt::ElideRight, rect.width());
    painter.setPen(QPen(lightOver(rect.left(), shown.width, time), Style::hairlineWidth));
    TextLine::draw(painter, rect, shown);
}

} // namespace tirlo::TickerShimmerText
