#pragma once

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

    [[nodiscard]] QSize sizeHint() const override { return minimumSize(); }

protected:
    bool event(QEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

private:
    IconButtonStyle m_style;
    QLatin1String m_icon;
};

} // namespace tirlo
