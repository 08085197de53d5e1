#pragma once

#include <QString>

namespace tirlo {

/// Height in device pixels of the built-in display's notch, 0 when none is in the picture.
///
/// On the laptops that have a notch the kernel's display driver leaves the strip beside it out of
/// the picture unless it is told otherwise. `systemRoot` is the folder that /sys and /proc lie in.
[[nodiscard]] int shownNotchHeight(const QString &systemRoot);

} // namespace tirlo
