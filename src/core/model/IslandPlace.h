#pragma once

#include "RawText.h"

namespace tirlo {

/// Where the island hangs on its screen.
enum class IslandPosition {
    /// In the notch, else below a panel that has the top centre, else at the screen's edge.
    automatic,
    screenEdge,
    belowPanel,
};

template<>
struct RawTexts<IslandPosition>
{
    static constexpr std::array texts{
        QLatin1String("automatic"),
        QLatin1String("screenEdge"),
        QLatin1String("belowPanel"),
    };
};

/// Which screen the island is on.
enum class IslandScreen {
    /// The one with the notch, else the main one.
    automatic,
    /// The one that the pointer is on when the island opens.
    pointer,
};

template<>
struct RawTexts<IslandScreen>
{
    static constexpr std::array texts{
        QLatin1String("automatic"),
        QLatin1String("pointer"),
    };
};

} // namespace tirlo
