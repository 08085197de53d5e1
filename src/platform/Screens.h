#pragma once

#include <QObject>
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
    /// How far down a panel of the desktop reaches at the top centre; 0 without one.
    double topPanel = 0;
    /// Height of the strip at the top that a display notch takes; 0 without a notch.
    double safeAreaTop = 0;
    /// Widths of the usable strips left and right of the notch, where they are known.
    std::optional<double> auxiliaryTopLeftWidth;
    std::optional<double> auxiliaryTopRightWidth;

    bool operator==(const ScreenInfo &) const = default;
};

/// The screens of the desktop, which come, go, turn and change their size and scale.
class Screens : public QObject
{
    Q_OBJECT

public:
    /// All screens in the desktop's order; empty when there is none.
    [[nodiscard]] virtual std::vector<ScreenInfo> all() const = 0;

    /// The main screen, or nothing when there is none.
    [[nodiscard]] virtual std::optional<ScreenInfo> main() const = 0;

    /// Height in points of the desktop's status bar where no screen tells it.
    [[nodiscard]] virtual double statusBarThickness() const = 0;

Q_SIGNALS:
    /// Something of all this may be another now; many changes in a row are told as few.
    void changed();
};

} // namespace tirlo
