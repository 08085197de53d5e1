#include "Sheet.h"

#include "ui/Style.h"

#include <QLinearGradient>
#include <QPainter>

namespace tirlo {

namespace {

constexpr int columnCount = 2;
constexpr int margin = 24;
constexpr int captionHeight = 28;
constexpr QColor paper{0x2B, 0x30, 0x3B};
constexpr QColor ink{0xC9, 0xCF, 0xDB};

QImage transparentImage(const QSize &size, double devicePixelRatio)
{
    QImage image(size * devicePixelRatio, QImage::Format_ARGB32_Premultiplied);
    image.setDevicePixelRatio(devicePixelRatio);
    image.fill(Qt::transparent);
    return image;
}

} // namespace

QImage blankTile(double devicePixelRatio, const QSize &size)
{
    QImage image = transparentImage(size, devicePixelRatio);
    QLinearGradient sky(0, 0, size.width(), size.height());
    sky.setColorAt(0, {0x8F, 0xB3, 0xD9});
    sky.setColorAt(0.55, {0xC8, 0xA9, 0xC9});
    sky.setColorAt(1, {0xF2, 0xC1, 0xA5});
    QPainter(&image).fillRect(QRect({}, size), sky);
    return image;
}

QImage sheet(const std::vector<Tile> &tiles, double devicePixelRatio)
{
    const int count = int(tiles.size());
    const int rows = (count + columnCount - 1) / columnCount;
    const QSize tile = tiles.front().picture.deviceIndependentSize().toSize();
    const QSize cell = tile + QSize(margin, captionHeight + margin);
    QImage image = transparentImage(
        {columnCount * cell.width() + margin, rows * cell.height() + margin}, devicePixelRatio);
    image.fill(paper);

    QPainter painter(&image);
    painter.setFont(Style::font(Style::bodySize));
    painter.setPen(ink);
    for (int i = 0; i < count; ++i) {
        const QPoint corner(margin + i % columnCount * cell.width(),
                            margin + i / columnCount * cell.height());
        const auto &[caption, picture] = tiles[std::size_t(i)];
        painter.drawImage(corner, picture);
        painter.drawText(
            QRect(corner + QPoint(0, tile.height()), QSize(tile.width(), captionHeight)),
            Qt::AlignLeft | Qt::AlignVCenter, caption);
    }
    return image;
}

} // namespace tirlo
