#pragma once

class QPainter;
class QRectF;
class QString;

/// A line of text with a light that sweeps over it again and again.
namespace tirlo::TickerShimmerText {

/// Draws the line as it looks at a media time in seconds; what doesn't fit the width is elided.
///
/// Uses the painter's font and opacity.
void draw(QPainter &painter, const QRectF &rect, const QString &line, double time);

} // namespace tirlo::TickerShimmerText
