#pragma once

#include <QString>

#include <optional>

class QPainter;
class QRectF;

/// One row of the ticker: a step that is live, spent, or on its way from one to the other.
namespace tirlo::TickerRowView {

/// Stands for the step before the first one, and for the step of a task that has none.
inline const QString placeholder = QStringLiteral("…");

/// The text of a row while its step is live, and once it is spent.
///
/// They differ where the wheel skips steps.
struct Texts
{
    QString live;
    QString spent;
};

/// Draws the row at a phase from 0, live, to 1, spent; its arrow turns into a tick on the way.
///
/// The light on a live step is as at that media time in seconds; without one it stands still.
/// Uses the painter's font and opacity.
void draw(QPainter &painter, const QRectF &row, const Texts &texts, double phase,
          std::optional<double> shimmerTime);

} // namespace tirlo::TickerRowView
