#include "IslandShape.h"

#include <QBitmap>
#include <QPainter>

#include <algorithm>
#include <cmath>

namespace tirlo {

namespace {

/// Where a quarter of a circle begins; the sweep goes clockwise as seen on the screen.
enum class From { right = 0, bottom = 90, left = 180, top = 270 };

void addQuarter(QPainterPath &path, double x, double y, double radius, From from)
{
    // Qt counts angles the other way round.
    path.arcTo(QRectF(x - radius, y - radius, 2 * radius, 2 * radius), -int(from), -90);
}

void addLowerEdge(QPainterPath &path, double width, double height, double corner)
{
    path.lineTo(width, height - corner);
    addQuarter(path, width - corner, height - corner, corner, From::right);
    path.lineTo(corner, height);
    addQuarter(path, corner, height - corner, corner, From::bottom);
}

} // namespace

QPainterPath IslandShape::path() const
{
    const double corner = std::max(cornerRadius, 0.0);
    QPainterPath path;

    if (topRadius < 0) {
        const double shoulder = -topRadius;
        path.moveTo(0, 0);
        addQuarter(path, 0, shoulder, shoulder, From::top);
        path.lineTo(width - shoulder, shoulder);
        addQuarter(path, width, shoulder, shoulder, From::left);
        addLowerEdge(path, width, height, corner);
        path.lineTo(0, 0);
        path.closeSubpath();
        return path;
    }

    const double top = std::min({topRadius, width / 2, height / 2});
    path.moveTo(top, 0);
    path.lineTo(width - top, 0);
    addQuarter(path, width - top, top, top, From::top);
    addLowerEdge(path, width, height, corner);
    path.lineTo(0, top);
    addQuarter(path, top, top, top, From::left);
    path.closeSubpath();
    return path;
}

QRegion IslandShape::region() const
{
    QBitmap pixels(int(std::ceil(width)), int(std::ceil(height)));
    if (pixels.isNull())
        return {};
    pixels.clear();
    QPainter painter(&pixels);
    painter.setPen(Qt::NoPen);
    painter.setBrush(Qt::color1);
    painter.drawPath(path());
    painter.end();
    return QRegion(pixels);
}

} // namespace tirlo
