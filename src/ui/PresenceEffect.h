#pragma once

#include <QGraphicsEffect>

namespace tirlo {

/// Shows a widget and what is in it fainter and smaller, for as long as it comes or goes.
///
/// While the widget is wholly there the effect is off and costs nothing.
class PresenceEffect final : public QGraphicsEffect
{
    Q_OBJECT

public:
    /// The widget owns the effect.
    explicit PresenceEffect(QWidget *widget);

    /// Opacity 0 to 1; the scale is about the widget's middle.
    void setPresence(double opacity, double scale);

protected:
    void draw(QPainter *painter) override;

private:
    double m_opacity = 1;
    double m_scale = 1;
};

} // namespace tirlo
