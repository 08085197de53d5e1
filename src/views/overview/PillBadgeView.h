#pragma once

#include "core/model/AgentTask.h"

class QColor;
class QPainter;
class QPointF;

/// The small round mark at a pill's corner.
namespace tirlo::PillBadgeView {

/// Draws the badge of a task of that colour around the centre.
void draw(QPainter &painter, const QPointF &centre, PillBadge badge, const QColor &taskColor);

} // namespace tirlo::PillBadgeView
