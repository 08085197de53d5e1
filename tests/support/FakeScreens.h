#pragma once

#include "platform/Screens.h"

#include <utility>

namespace tirlo {

/// Screens as a test lays them out; the first is the main one.
class FakeScreens final : public Screens
{
public:
    FakeScreens()
        : screens{plain()}
    {
    }

    explicit FakeScreens(std::vector<ScreenInfo> list)
        : screens(std::move(list))
    {
    }

    [[nodiscard]] std::vector<ScreenInfo> all() const override { return screens; }

    [[nodiscard]] std::optional<ScreenInfo> main() const override
    {
        return screens.empty() ? std::nullopt : std::optional(screens.front());
    }

    [[nodiscard]] double statusBarThickness() const override { return 24; }

    /// A screen at the left edge of the desktop with a bar of that height at its top.
    [[nodiscard]] static ScreenInfo plain(double barHeight = 0)
    {
        ScreenInfo screen;
        screen.frame = {0, 0, 1440, 900};
        screen.visibleFrame = screen.frame.adjusted(0, barHeight, 0, 0);
        return screen;
    }

    /// A screen right of the plain one with a notch of 200 by 38.
    [[nodiscard]] static ScreenInfo notched()
    {
        ScreenInfo screen;
        screen.frame = {1440, 100, 1512, 982};
        screen.visibleFrame = screen.frame.adjusted(0, 38, 0, 0);
        screen.safeAreaTop = 38;
        screen.auxiliaryTopLeftWidth = 656;
        screen.auxiliaryTopRightWidth = 656;
        return screen;
    }

    /// Other screens from now on; the desktop tells of it.
    void become(std::vector<ScreenInfo> list)
    {
        screens = std::move(list);
        Q_EMIT changed();
    }

    std::vector<ScreenInfo> screens;
};

} // namespace tirlo
