#pragma once

#include "core/model/IslandView.h"
#include "ui/motion/Animation.h"

/// How the island goes from one size to the next.
namespace tirlo::IslandMotion {

inline constexpr Spring openSpring{.response = 0.5, .dampingFraction = 0.72};
inline constexpr TimingCurve closeEase{.x1 = 0.45, .y1 = 0, .x2 = 0.2, .y2 = 1, .duration = 0.34};
/// Tabs and buttons of the header follow the view that they lead to.
inline constexpr Spring viewSpring{.response = 0.3, .dampingFraction = 0.8};
/// The greeting folds slowly at both ends, its mascot and the island around it as one.
inline constexpr TimingCurve foldEase{.x1 = 0.65, .y1 = 0, .x2 = 0.35, .y2 = 1, .duration = 0.34};

/// A change to a lower mode eases shut, any other springs open.
[[nodiscard]] inline Animation forChange(IslandMode from, IslandMode to)
{
    return to < from ? Animation(closeEase) : Animation(openSpring);
}

} // namespace tirlo::IslandMotion
