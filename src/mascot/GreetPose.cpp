#include "GreetPose.h"

#include "Easing.h"
#include "core/IslandConst.h"
#include "core/IslandLayout.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace tirlo {

namespace {

using std::numbers::pi;

/// The film stands still from here on.
constexpr double lastMoment = 14.6;

/// Where the mascot stands once it has come out of the notch.
constexpr double stageX = 320;
constexpr double stageY = 90;

/// The film's mascot is so much smaller than one that stands on the island with the same look.
constexpr double filmShare = 0.85;

double share(double t, double from, double length)
{
    return std::clamp((t - from) / length, 0.0, 1.0);
}

bool isWithin(double t, double from, double to)
{
    return t >= from && t < to;
}

void swellIsland(GreetPose &pose, double t, const IslandRestingLayout &compact)
{
    const double q = share(t, 0, 0.5);
    const double g = std::sin(pi * q / 2) + 0.04 * q * std::sin(pi * q);
    const double notch = compact.width - IslandConst::compactExtraWidth;
    pose.w = notch + (greetFrame.width() - notch) * g;
    pose.h = compact.height + (greetFrame.height() - compact.height) * g;
}

void growMascot(GreetPose &pose, double t, const IslandRestingLayout &compact)
{
    const double middle = compact.height / 2;
    pose.d = 3 + 55 * easeOutBackStd((t - 0.02) / 0.43);
    pose.x = stageX;
    pose.y = middle + (stageY - middle) * easeOutCubic(share(t, 0.02, 0.43));
}

void bow(GreetPose &pose, double t)
{
    if (!isWithin(t, 1.25, 1.52))
        return;
    const double s = std::sin(pi * (t - 1.25) / 0.27);
    pose.sx = 1 + 0.04 * s;
    pose.sy = 1 - 0.06 * s;
    pose.lift = s;
    pose.y += 0.22 * pose.d * s;
}

void sway(GreetPose &pose, double t)
{
    if (isWithin(t, 1.52, 2.8)) {
        const double u = 2 * pi * (t - 1.52);
        const double f = 1 - share(t, 2.58, 0.22);
        pose.x += f * 0.05 * 1.34 * pose.d * std::sin(0.9 * u);
        pose.rot = 0.05 * f * std::sin(0.9 * u + 0.6);
        pose.y += 0.8 * f * std::sin(1.8 * u);
    }
    if (isWithin(t, 2.58, 3.2))
        pose.y += 0.12 * pose.d * std::sin(pi * (t - 2.58) / 0.62);
}

double lids(double t)
{
    for (const double blink : {1.95, 3.8}) {
        if (isWithin(t, blink, blink + 0.12))
            return 1 - 0.94 * std::sin(pi * (t - blink) / 0.12);
    }
    return 1;
}

GreetEye eyeAt(double t)
{
    if (isWithin(t, 0.6, 0.82))
        return GreetEye::surprised;
    return isWithin(t, 2.45, 2.58) || isWithin(t, 2.85, 3.2) ? GreetEye::happy : GreetEye::open;
}

void look(GreetPose &pose, double t)
{
    pose.eye = eyeAt(t);
    pose.open = lids(t);
    if (isWithin(t, 0.82, 1.25)) {
        pose.lookY = -0.2;
    } else if (isWithin(t, 1.52, 2.45)) {
        pose.lookX = 0.55;
        pose.lookY = -0.45;
    } else if (t >= 2.45) {
        const double away = 1 - easeInOutCubic(share(t, 3.2, 0.35));
        pose.lookX = -0.3 * away;
        pose.lookY = 0.6 * away;
    }
}

double handSize(double t, double appears, double goes)
{
    if (t < 2.58)
        return easeOutBackStd((t - appears) / 0.14);
    const double p = share(t, goes, 0.19);
    return 1 - p * p * p;
}

} // namespace

GreetPose greetPose(double t, const IslandRestingLayout &compact)
{
    GreetPose pose;
    swellIsland(pose, t, compact);
    growMascot(pose, t, compact);
    bow(pose, t);
    sway(pose, t);
    look(pose, t);
    pose.handL = handSize(t, 1.36, 2.58);
    pose.handR = handSize(t, 1.4, 2.61);
    pose.wave = isWithin(t, 1.52, 2.58) ? t - 1.52 : -1;
    pose.badge = easeOutBackStd((t - 2.72) / 0.28);
    pose.foldT = share(t, 3.85, 0.3);
    pose.fold = 0.6 * easeInOutCubic(pose.foldT);
    pose.bloom = easeOutCubic(share(t, 0.3, 0.4));
    pose.flash1 = std::clamp(4 * (t - 0.35), 0.0, 1.0);
    pose.flash2 = std::clamp(4 * (t - 0.18), 0.0, 1.0);
    return pose;
}

GreetPose pose(double t, double tc, const IslandRestingLayout &compact)
{
    if (t < tc)
        return greetPose(std::min(t, lastMoment), compact);

    GreetPose pose = greetPose(std::min(tc, lastMoment), compact);
    const double k = easeInOutCubic(share(t, tc, greetFoldTime));
    const auto settle = [k](double &value, double rest) { value += (rest - value) * k; };
    settle(pose.w, compact.width);
    settle(pose.h, compact.height);
    const MascotPlace rest = IslandLayout::compactMascotPlace({compact.width, compact.height});
    settle(pose.x, stageX - compact.width / 2 + rest.centre.x());
    settle(pose.y, rest.centre.y());
    settle(pose.d, filmShare * rest.diameter);
    for (double *upright : {&pose.sx, &pose.sy, &pose.open, &pose.fold, &pose.foldT})
        settle(*upright, 1);
    for (double *gone :
         {&pose.lift, &pose.rot, &pose.lookX, &pose.lookY, &pose.handL, &pose.handR, &pose.badge})
        settle(*gone, 0);
    if (k > 0.5)
        pose.eye = GreetEye::open;
    return pose;
}

} // namespace tirlo
