#pragma once

class QPainter;
class QRectF;
class QWidget;

/// The ring around the control that the keyboard acts on.
namespace tirlo::FocusRing {

/// True while the control has the focus and the user got there by the keyboard.
[[nodiscard]] bool isShown(const QWidget &control);

/// Draws the ring just within the edge, whose corners have that radius in points.
void draw(QPainter &painter, const QRectF &edge, double radius);

} // namespace tirlo::FocusRing
