#pragma once

#include <QImage>
#include <QString>

#include <vector>

namespace tirlo {

/// A picture of the top of the screen, and what it shows.
struct Tile
{
    QString caption;
    QImage picture;
};

/// Size in points of the strip of screen that every tile shows.
inline constexpr QSize tileSize{720, 210};

/// A tile's picture as it is before anything is drawn: a calm wallpaper.
[[nodiscard]] QImage blankTile(double devicePixelRatio, const QSize &size = tileSize);

/// All tiles, which are of one size, in two columns, each above its caption.
[[nodiscard]] QImage sheet(const std::vector<Tile> &tiles, double devicePixelRatio);

} // namespace tirlo
