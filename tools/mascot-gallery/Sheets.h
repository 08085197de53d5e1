#pragma once

#include "Sheet.h"

#include <vector>

namespace tirlo {

/// Every state of the big mascot, some seconds in.
[[nodiscard]] Sheet stateSheet();
/// Every eye, on the big mascot and on a mini, and the turns of the head.
[[nodiscard]] Sheet eyeSheet();
/// Every badge, over time.
[[nodiscard]] Sheet badgeSheet();
/// Every particle, from birth to death.
[[nodiscard]] Sheet particleSheet();
/// The way from the soft body to the box, and the box with its slot open.
[[nodiscard]] Sheet morphSheet();
/// Every sequence as a strip of moments, one a row.
[[nodiscard]] Sheet filmSheet();
/// Minis in all colours of the catalogue, as in the pills and as in the small grid.
[[nodiscard]] Sheet miniSheet();
/// The big mascot at the sizes it has on the cards and beside the notch.
[[nodiscard]] Sheet sizeSheet();

/// All of them.
[[nodiscard]] std::vector<Sheet> allSheets();

} // namespace tirlo
