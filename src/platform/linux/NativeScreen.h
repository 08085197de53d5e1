#pragma once

#include <QRect>
#include <QRectF>

class QScreen;

namespace tirlo {

/// Where the screen is, in device pixels of the whole desktop.
///
/// The X server is asked itself: Qt may keep the old place of a screen that moved as another was
/// unplugged.
[[nodiscard]] QRect nativePlace(const QScreen &screen);

/// The same in points: Qt scales a screen around its own corner.
[[nodiscard]] QRectF frameOf(const QScreen &screen);

/// The device pixels of the screen whose frame in points that is; empty when there is none.
[[nodiscard]] QRect nativeScreen(const QRectF &frame);

} // namespace tirlo
