#pragma once

#include <QRect>
#include <QRectF>

namespace tirlo {

/// The device pixels of the screen whose frame in points that is; empty when there is none.
[[nodiscard]] QRect nativeScreen(const QRectF &frame);

} // namespace tirlo
