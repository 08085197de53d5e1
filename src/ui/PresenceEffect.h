#pragma once

#include <QGraphicsEffect>
#include <QPainterPath>

namespace tirlo {

/// Shows a widget and what is in it fainter, smaller or partly covered, for as long as it comes or
/// goes.
///
/// While the widget is wholly there the effect is off and costs nothing. The widget is painted anew
/// only when it changes itself, not when its presence does.
class PresenceEffect final : public QGraphicsEffect
{
    Q_OBJECT

public:
    /// The widget owns the effect.
    explicit PresenceEffect(QWidget *widget);

    /// Opacity 0 to 1; the scale is about the widget's middle.
    void setPresence(double opacity, double scale);

    /// Shows only what lies within the outline, which is in the widget's coordinates; an empty one
    /// covers nothing.
    void setOutline(const QPainterPath &outline);

protected:
    void draw(QPainter *painter) override;

private:
    void changed();

    double m_opacity = 1;
    double m_scale = 1;
    QPainterPath m_outline;
};

} // namespace tirlo
