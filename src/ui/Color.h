#pragma once

#include <QColor>
#include <QString>

namespace tirlo {

/// The colour of a text such as "#F7B32B", opaque; black when rgbFromHex() finds none.
[[nodiscard]] QColor colorFromHex(const QString &text);

/// The colour with the amount, 0 to 1, added to each component; its opacity stays.
[[nodiscard]] QColor lighter(const QColor &color, double amount);

/// The colour that share of the way, 0 to 1, from one to the other.
[[nodiscard]] QColor mixed(const QColor &from, const QColor &to, double share);

/// The colour at an opacity of 0 to 1; one beyond, where a spring swings too far, is the nearest.
[[nodiscard]] QColor withOpacity(const QColor &color, double opacity);

} // namespace tirlo
