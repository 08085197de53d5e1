#pragma once

#include <QImage>
#include <QPainter>
#include <QString>

#include <functional>
#include <vector>

namespace tirlo {

/// A contact sheet: pictures in a grid on the island's black, each with its caption.
class Sheet
{
public:
    using Picture = std::function<void(QPainter &painter)>;

    /// `cell` is the size of one picture in points.
    Sheet(QString name, QSize cell, int columns);

    /// Adds a picture, painted with the origin at the cell's top-left corner.
    void add(const QString &caption, Picture picture);

    /// The sheet at a device pixel ratio.
    [[nodiscard]] QImage render(double ratio) const;

    [[nodiscard]] const QString &name() const { return m_name; }

private:
    struct Cell
    {
        QString caption;
        Picture picture;
    };

    QString m_name;
    QSize m_cell;
    int m_columns;
    std::vector<Cell> m_cells;
};

} // namespace tirlo
