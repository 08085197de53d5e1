#pragma once

#include "IslandGeometry.h"
#include "core/IslandConst.h"
#include "ui/Observers.h"

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
    /// Store and shape must outlive the panel.
    ///
    /// Where the pointer is only known over windows of ours, the panel takes it in the whole hit
    /// area; such a desktop is a Wayland session, whose window manager is also kept out of it,
    /// since it would put the panel into the middle of the screen.
    IslandPanel(AppState &state, WindowShape &shape, bool pointerSeenEverywhere = true);

    /// The notch in points, as measured on the panel's screen.
    double notchWidth = IslandConst::unknownNotchWidth;
    double notchHeight = 32;

    /// Hangs the panel at the top centre of the screen, whose notch has been measured.
    void placeOn(const ScreenInfo &screen, const IslandScreenGeometry &notch);

    /// The top-left corner of the panel's screen, in points of the desktop.
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

    /// Asks for the keyboard, as a card with a text field needs it.
    void takeKeyboard();

    /// Wants the keyboard no more; true when the panel had it.
    bool releaseKeyboard();

protected:
    bool event(QEvent *event) override;

private:
    void acceptKeyboard(bool accepts);
    void becomeDock();
    void holdPlace();
    void updateInputRegion();

    AppState &m_state;
    WindowShape &m_shape;
    const bool m_takesPointerInHitArea;
    QPointF m_screenOrigin;
    QPoint m_place;
    /// As drawn; none while nothing draws it, when it counts as at rest.
    std::optional<IslandShape> m_drawn;
    /// What the region that takes the pointer was made of; an empty outline stands for none.
    IslandShape m_inputShape{.width = 0, .height = 0};
    Observers m_observers;
};

} // namespace tirlo
