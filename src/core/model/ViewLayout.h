#pragma once

#include "IslandView.h"

#include <optional>

namespace tirlo {

/// The geometry of one card; lengths in points, relative to the island's top-left corner.
struct ViewLayout
{
    double height = 0;
    /// Centre of the mascot.
    double botX = 0;
    /// Absent means the middle of the card area.
    std::optional<double> botY;
    double botDiameter = 0;
    AgentLayoutMode agentMode = AgentLayoutMode::none;

    bool operator==(const ViewLayout &) const = default;
};

} // namespace tirlo
