#pragma once

#include <QPainterPath>
#include <QRegion>

namespace tirlo {

/// The island's outline: it grows out of the screen's top edge and is round at its lower corners.
///
/// Lengths are points; the outline's origin is the island's top-left corner.
struct IslandShape
{
    double width = 184;
    double height = 32;
    /// Of the lower corners; a negative one counts as 0.
    double cornerRadius = 14;
    /// Of the upper corners; a negative one gives the top edge two outward shoulders.
    double topRadius = 0;

    /// The closed outline.
    [[nodiscard]] QPainterPath path() const;

    /// The pixels of the outline, at one pixel a point.
    [[nodiscard]] QRegion region() const;

    bool operator==(const IslandShape &) const = default;
};

} // namespace tirlo
