#include "island/IslandGeometry.h"

#include "core/IslandLayout.h"
#include "support/FakeScreens.h"

#include <gtest/gtest.h>

#include <tuple>

using namespace tirlo;

namespace {

using namespace IslandGeometry;
using namespace IslandLayout;

TEST(IslandGeometryTest, ABarThatIsTooLowHasNoMascot)
{
    const auto diameter = [](double height) {
        return mascotPlace(IslandMode::hidden, IslandView::overview, {80, height}, false, 0)
            .diameter;
    };
    EXPECT_EQ(diameter(4), 0);
    EXPECT_EQ(diameter(24), 18);
}

TEST(IslandGeometryTest, TheFirstScreenWithANotchIsChosen)
{
    ScreenInfo second = FakeScreens::notched();
    second.safeAreaTop = 40;
    const FakeScreens screens({FakeScreens::plain(), FakeScreens::notched(), second});
    EXPECT_EQ(notchScreen(screens), FakeScreens::notched());
    EXPECT_EQ(notchScreen(FakeScreens()), std::nullopt);
    EXPECT_EQ(notchScreen(FakeScreens(std::vector<ScreenInfo>())), std::nullopt);
}

TEST(IslandGeometryTest, TheIslandFitsTheNotchOrTheBarOfItsScreen)
{
    const auto notched = [](std::optional<double> left, std::optional<double> right) {
        ScreenInfo screen = FakeScreens::notched();
        screen.auxiliaryTopLeftWidth = left;
        screen.auxiliaryTopRightWidth = right;
        return screen;
    };
    EXPECT_EQ(screenGeometry(FakeScreens::notched(), 24), (IslandScreenGeometry{200, 38, true}));
    EXPECT_EQ(screenGeometry(notched(0, 1), 24), (IslandScreenGeometry{1511, 38, true}));
    for (const ScreenInfo &odd :
         {notched(std::nullopt, 656), notched(756, 756), notched(800, 800), notched(0, 0)})
        EXPECT_EQ(screenGeometry(odd, 24), (IslandScreenGeometry{184, 38, true}));

    for (const auto &[menuHeight, barHeight, height] :
         {std::tuple(30, 22, 24), std::tuple(18, 22, 18), std::tuple(0, 22, 22),
          std::tuple(0, 40, 24)}) {
        EXPECT_EQ(screenGeometry(FakeScreens::plain(menuHeight), barHeight),
                  (IslandScreenGeometry{80, double(height), false}))
            << menuHeight << ' ' << barHeight;
    }
}

} // namespace
