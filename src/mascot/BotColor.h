#pragma once

#include <QColor>
#include <QStringView>

#include <optional>

namespace tirlo {

/// A plain colour; components from 0 to 1.
struct BotColor
{
    double red = 0;
    double green = 0;
    double blue = 0;

    bool operator==(const BotColor &) const = default;

    /// The paint of this colour.
    [[nodiscard]] QColor paint(double opacity = 1) const;

    /// This colour moved toward white; 0 leaves it, 1 is white.
    [[nodiscard]] BotColor lightened(double amount) const;
};

/// The colour of a text such as "#F7B32B", or nothing when rgbFromHex() finds none.
[[nodiscard]] std::optional<BotColor> cgColorFromHex(QStringView text);

/// The mascot's constant colours.
namespace PebboConst {

/// Lit and shaded end of the grey body.
inline constexpr BotColor baseTop{0.929, 0.929, 0.937};
inline constexpr BotColor baseBottom{0.769, 0.773, 0.792};
/// Eyes of the big mascot.
inline constexpr BotColor ink{0.102, 0.082, 0.071};
/// Eyes of a mini.
inline constexpr BotColor miniInk{0.063, 0.075, 0.102};

} // namespace PebboConst

} // namespace tirlo
