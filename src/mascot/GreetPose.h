#pragma once

#include "IslandRestingLayout.h"

#include <QSizeF>

namespace tirlo {

/// The frame that the greeting is composed in, in points; its top middle is the island's.
inline constexpr QSizeF greetFrame(640, 150);

/// Seconds from the call to fold until the island and its mascot have their resting form.
inline constexpr double greetFoldTime = 0.34;

enum class GreetEye { open, surprised, happy };

/// All that one moment of the greeting shows; lengths in points of the film's frame, y downward.
struct GreetPose
{
    /// The mascot: diameter and centre.
    double d = 0;
    double x = 0;
    double y = 0;
    /// A bow squeezes the body by these and rolls the face under it, from 0 to 1.
    double sx = 1;
    double sy = 1;
    double lift = 0;
    /// Radians.
    double rot = 0;

    GreetEye eye = GreetEye::open;
    /// Lids, 0 shut to 1 open.
    double open = 1;
    /// Gaze, each from -1 to 1.
    double lookX = 0;
    double lookY = 0;

    /// Sizes of the hands and of the closing check, 0 away to 1.
    double handL = 0;
    double handR = 0;
    double badge = 0;
    /// Seconds into the wave; -1 before and after it.
    double wave = -1;

    /// How far the scene has faded for the end, from 0 to 1, and the time of that as a share.
    double fold = 0;
    double foldT = 0;
    /// How far the lights have come up, from 0 to 1: behind the burst, far around the mascot, and
    /// close around it together with the card.
    double bloom = 0;
    double flash1 = 0;
    double flash2 = 0;

    /// The island.
    double w = 0;
    double h = 0;

    bool operator==(const GreetPose &) const = default;
};

/// The film at `t` seconds when nothing ends it.
[[nodiscard]] GreetPose greetPose(double t, const IslandRestingLayout &compact);

/// The film at `t` seconds when it was told at `tc` to fold; an infinite `tc` lets it run.
[[nodiscard]] GreetPose pose(double t, double tc, const IslandRestingLayout &compact);

} // namespace tirlo
