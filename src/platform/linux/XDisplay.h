#pragma once

#include <QString>

namespace tirlo {

/// What keeps this process from its X server, as one line for the terminal; "" when nothing does.
///
/// To be asked before anything is shown: the toolkit ends the process without one.
[[nodiscard]] QString missingDisplay();

} // namespace tirlo
