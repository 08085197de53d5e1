#pragma once

#include "IslandConst.h"
#include "IslandShape.h"
#include "ui/Observers.h"

#include <QRegion>
#include <QWidget>

namespace tirlo {

class AppState;
class WindowShape;

/// The borderless window around the notch that holds the drawn island and is else see-through.
///
/// It stays above other windows and never takes the focus by itself. Only the island takes the
/// pointer: a click beside it reaches the window beneath.
class IslandPanel final : public QWidget
{
    Q_OBJECT

public:
    /// Both must outlive the panel.
    IslandPanel(AppState &state, WindowShape &shape);

    /// The notch in points, as measured on the panel's screen.
    double notchWidth = IslandConst::unknownNotchWidth;
    double notchHeight = 32;

    /// The island's rectangle in the panel, y growing downward; `nw` and `nh` are the notch's size.
    [[nodiscard]] QRectF currentIslandFrame(double nw, double nh) const;

    /// Fills the panel with the island's views; the panel owns them from now on.
    void setContent(QWidget *content);

Q_SIGNALS:
    /// A press on the island that no control took.
    void islandPressed();

protected:
    bool event(QEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;

private:
    void becomeDock();
    void updateInputRegion();

    AppState &m_state;
    WindowShape &m_shape;
    /// The outline whose region the native window has now; an empty one stands for none.
    IslandShape m_inputShape{.width = 0, .height = 0};
    Observers m_observers;
};

} // namespace tirlo
