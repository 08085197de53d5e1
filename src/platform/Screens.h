#pragma once

#include <QRectF>

#include <optional>
#include <vector>

namespace tirlo {

/// One screen as the desktop reports it; lengths in logical points, y growing downward.
struct ScreenInfo
{
    QRectF frame;
    /// The frame without the desktop's bars and docks.
    QRectF visibleFrame;
    /// Height of the strip at the top that a display notch takes; 0 without a notch.
    double safeAreaTop = 0;
    /// Widths of the usable strips left and right of the notch, where they are known.
    std::optional<double> auxiliaryTopLeftWidth;
    std::optional<double> auxiliaryTopRightWidth;

    bool operator==(const ScreenInfo &) const = default;
};

/// The screens of the desktop.
class Screens
{
public:
    virtual ~Screens() = default;

    /// All screens in the desktop's order; empty when there is none.
    [[nodiscard]] virtual std::vector<ScreenInfo> all() const = 0;

    /// The main screen, or nothing when there is none.
    [[nodiscard]] virtual std::optional<ScreenInfo> main() const = 0;

    /// Height in points of the desktop's status bar where no screen tells it.
    [[nodiscard]] virtual double statusBarThickness() const = 0;
};

} // namespace tirlo
