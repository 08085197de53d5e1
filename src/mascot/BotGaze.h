#pragma once

#include <QPointF>

namespace tirlo {

class AppState;
class Screens;

/// Which way the big mascot looks to see the pointer; -1 to 1 each way, x to the right, y upward.
///
/// The place of the mascot is that of rest: in a flight between places it already looks from where
/// it goes.
[[nodiscard]] QPointF gazeAtPointer(const AppState &state, const Screens &screens);

} // namespace tirlo
