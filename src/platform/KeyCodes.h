#pragma once

#include <Qt>

#include <cstdint>
#include <optional>

namespace tirlo {

/// The modifier bits of a shortcut, as the settings keep them.
namespace ModifierBits {

inline constexpr std::uint32_t shift = 0x20000;
inline constexpr std::uint32_t control = 0x40000;
inline constexpr std::uint32_t option = 0x80000;
inline constexpr std::uint32_t command = 0x100000;
inline constexpr std::uint32_t all = shift | control | option | command;

} // namespace ModifierBits

/// Translates the desktop's names of keys and modifiers to and from the product's.
///
/// A virtual key code names a place on the keyboard, whatever letter the layout puts there. A scan
/// code is what `QKeyEvent::nativeScanCode()` says. Of the modifiers only the four of ModifierBits
/// count; a lock is none of them.
namespace KeyCodes {

/// The virtual key code of the scan code, or nothing for a key that has none.
[[nodiscard]] std::optional<std::uint16_t> fromScanCode(std::uint32_t scanCode);

/// The scan code of the virtual key code, or nothing for a key that no keyboard here has.
[[nodiscard]] std::optional<std::uint32_t> toScanCode(std::uint16_t keyCode);

/// The modifier bits of an X modifier mask; Mod1 is Option, Mod4 is Command.
[[nodiscard]] std::uint32_t modifiersFromX(std::uint32_t mask);

/// The X modifier mask of the modifier bits.
[[nodiscard]] std::uint32_t modifiersToX(std::uint32_t bits);

/// The modifier bits of Qt's modifiers; Alt is Option, Meta is Command.
[[nodiscard]] std::uint32_t modifiersFromQt(Qt::KeyboardModifiers qtModifiers);

/// Qt's modifiers of the modifier bits.
[[nodiscard]] Qt::KeyboardModifiers modifiersToQt(std::uint32_t bits);

} // namespace KeyCodes

} // namespace tirlo
