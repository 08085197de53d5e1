#pragma once

#include "motion/Animated.h"
#include "motion/FrameClock.h"

#include <QAbstractButton>
#include <QColor>

namespace tirlo {

/// The looks of a button that shows an icon alone; lengths in points.
struct IconButtonStyle
{
    QColor color;
    QColor hoveredColor;
    /// Transparent for none.
    QColor fill = Qt::transparent;
    QColor hoveredFill = Qt::transparent;
    /// Side of the icon's square.
    double iconSide = 16;
    double radius = 7;

    bool operator==(const IconButtonStyle &) const = default;
};

/// A button that shows an icon alone, in the middle of its fixed size.
///
/// Its accessible name and tool tip say what the icon means. A click never moves the keyboard focus
/// to it.
class IconButton : public QAbstractButton
{
    Q_OBJECT

public:
    IconButton(const QSize &size, const IconButtonStyle &style, QWidget *parent = nullptr);

    /// Shows the icon of that name, such as "plus", and gives it its meaning in words.
    void setIcon(QLatin1String icon, const QString &meaning);

    void setStyle(const IconButtonStyle &style);

    /// Goes over to the looks' colours; at once while nobody sees the button.
    void fadeTo(const IconButtonStyle &style, const Animation &animation, FrameClock &clock);

    [[nodiscard]] QSize sizeHint() const override { return minimumSize(); }

protected:
    bool event(QEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

private:
    void showAt(double time);

    /// What it is drawn in, as of the last frame, and where a fade comes from and leads to.
    IconButtonStyle m_shown;
    IconButtonStyle m_from;
    IconButtonStyle m_style;
    Animated<double> m_share{1};
    FrameClock::Subscription m_frames;
    QLatin1String m_icon;
};

} // namespace tirlo
