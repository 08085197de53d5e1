#include "Sheet.h"

#include "ui/Style.h"

namespace tirlo {

namespace {

constexpr int gap = 8;
constexpr int captionHeight = 16;

} // namespace

Sheet::Sheet(QString name, QSize cell, int columns)
    : m_name(std::move(name))
    , m_cell(cell)
    , m_columns(columns)
{
}

void Sheet::add(const QString &caption, Picture picture)
{
    m_cells.push_back({caption, std::move(picture)});
}

QImage Sheet::render(double ratio) const
{
    const int rows = (int(m_cells.size()) + m_columns - 1) / m_columns;
    const QSize pitch(m_cell.width() + gap, m_cell.height() + captionHeight + gap);
    const QSize size(m_columns * pitch.width() + gap, rows * pitch.height() + gap);

    QImage image(size * ratio, QImage::Format_ARGB32_Premultiplied);
    image.setDevicePixelRatio(ratio);
    image.fill(Style::island);
    QPainter painter(&image);
    painter.setFont(Style::font(Style::captionSize));

    for (int i = 0; i < int(m_cells.size()); ++i) {
        const Cell &cell = m_cells[std::size_t(i)];
        const QPoint corner(gap + i % m_columns * pitch.width(),
                            gap + i / m_columns * pitch.height());
        painter.save();
        painter.translate(corner);
        cell.picture(painter);
        painter.restore();

        painter.setPen(Style::faintText);
        painter.drawText(
            QRect(corner + QPoint(0, m_cell.height()), QSize(m_cell.width(), captionHeight)),
            Qt::AlignCenter, cell.caption);
    }
    return image;
}

} // namespace tirlo
