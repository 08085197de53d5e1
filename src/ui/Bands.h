#pragma once

#include <QBrush>
#include <QPainter>
#include <QPixmap>
#include <QRect>
#include <QRegion>

// Qt 6's raster engine shares a fill of many rows out to a pool of threads, whose waking costs more
// than a fill of our sizes; what is painted at each frame is painted in bands low enough for the
// painting thread alone.

namespace tirlo {

/// Fills a rectangle of whole points.
void fillInBands(QPainter &painter, const QRect &rect, const QBrush &brush);

/// Draws those parts of the picture that lie in the region; its top left corner is at the origin.
void drawInBands(QPainter &painter, const QRegion &region, const QPixmap &picture);

} // namespace tirlo
