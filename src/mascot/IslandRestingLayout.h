#pragma once

namespace tirlo {

/// The form that the island folds into when the greeting ends; lengths in points.
struct IslandRestingLayout
{
    double width = 0;
    double height = 0;
    /// Of the lower corners.
    double cornerRadius = 0;

    bool operator==(const IslandRestingLayout &) const = default;
};

} // namespace tirlo
