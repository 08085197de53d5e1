#pragma once

#include "IslandGeometry.h"
#include "core/IslandConst.h"
#include "ui/Observers.h"

#include <QWidget>

namespace tirlo {

class AppState;
class PanelWindow;
class WindowShape;

/// The borderless window around the notch that holds the drawn island and is else see-through.
///
/// No window manager looks after it, so that it stands where it is put, on every virtual desktop
/// and in no list of windows. It never takes the focus by itself. Only the island takes the
/// pointer: a click beside it reaches the window beneath.
class IslandPanel final : public QWidget
{
    Q_OBJECT

public:
    /// All of these must outlive the panel.
    ///
    /// Where the pointer is only known over windows of ours, the panel takes it in the whole hit
    /// area.
    IslandPanel(AppState &state, WindowShape &shape, PanelWindow &window,
                bool pointerSeenEverywhere = true);

    /// The notch in points, as measured on the panel's screen.
    double notchWidth = IslandConst::unknownNotchWidth;
    double notchHeight = 32;

    /// Hangs the panel at the top centre of the screen, whose notch has been measured, so many
    /// points below its edge.
    void placeOn(const ScreenInfo &screen, const IslandScreenGeometry &notch, double depth);

    /// Slides an open island that is wider than its screen along with the pointer, in points of the
    /// desktop: at the screen's left edge is then its left end, at the right edge its right one.
    void slideUnder(QPointF pointer);

    /// Whether the panel is where it was put, in its own size.
    [[nodiscard]] bool isAtItsPlace() const;

    /// Goes back to where it was put.
    void goToItsPlace();

    /// The left edge of the panel's screen and the line that the panel hangs from, in points of the
    /// desktop.
    [[nodiscard]] QPointF screenOrigin() const { return m_screenOrigin; }

    /// The island's rectangle in the panel, y growing downward; `nw` and `nh` are the notch's size.
    [[nodiscard]] QRectF currentIslandFrame(double nw, double nh) const;

    /// Where the pointer counts as being on the island: a little more than what is drawn, except
    /// for a closed island on a screen without a notch.
    [[nodiscard]] QRectF hitArea() const;

    /// Fills the panel with the island's views; the panel owns them from now on.
    void setContent(QWidget *content);

    /// Takes the pointer where the island is drawn, with that outline in the middle of the upper
    /// edge.
    void setDrawn(const IslandShape &outline);

    /// Takes the keyboard, as a card with a text field needs it.
    void takeKeyboard();

    /// Gives the keyboard back, if the panel had taken it; false when the window that had it before
    /// is not there any more.
    bool releaseKeyboard();

protected:
    bool event(QEvent *event) override;
    bool focusNextPrevChild(bool next) override;

private:
    void hang(double aside);
    void updateInputRegion();

    AppState &m_state;
    WindowShape &m_shape;
    PanelWindow &m_window;
    const bool m_takesPointerInHitArea;
    QPointF m_screenOrigin;
    double m_screenWidth = 0;
    QPoint m_place;
    /// How far an open island reaches over either side of its screen, in points.
    double m_overhang = 0;
    /// As drawn; none while nothing draws it, when it counts as at rest.
    std::optional<IslandShape> m_drawn;
    /// What the region that takes the pointer was made of; an empty outline stands for none.
    IslandShape m_inputShape{.width = 0, .height = 0};
    Observers m_observers;
};

} // namespace tirlo
