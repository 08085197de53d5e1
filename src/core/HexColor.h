#pragma once

#include <QStringView>

#include <cstdint>
#include <optional>

namespace tirlo {

/// Red, green and blue, 8 bits each from the top, of a text such as "#F7B32B"; nothing when it is
/// not a hexadecimal number.
///
/// Hash signs at both ends don't matter, and only the low 24 bits of a longer number count.
[[nodiscard]] std::optional<std::uint32_t> rgbFromHex(QStringView text);

} // namespace tirlo
