#pragma once

#include <QColor>
#include <QImage>
#include <QRect>

#include <functional>

namespace tirlo::e2e {

/// Widths of the island in screen pixels, on the stage's plain screen.
inline constexpr int compactWidth = 240;
inline constexpr int openWidth = 640;

/// How wide the island is on the screen now, in pixels.
[[nodiscard]] int islandWidth();

/// Whether the island comes to be that wide within the time.
bool waitForWidth(int width, int milliseconds = 5000);

/// A picture of a part of an island that is as wide as given; the part is relative to the island's top-left corner.
[[nodiscard]] QImage takeIslandPicture(int width, const QRect &part);

/// How many pixels of a part of the island fit the description.
[[nodiscard]] int countPixels(int width, const QRect &part,
                              const std::function<bool(const QColor &)> &fits);

} // namespace tirlo::e2e
