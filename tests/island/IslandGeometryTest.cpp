#include "island/IslandGeometry.h"

#include "core/IslandLayout.h"
#include "core/model/RawText.h"
#include "support/FakeScreens.h"

#include <gtest/gtest.h>

#include <tuple>

using namespace tirlo;

namespace {

using namespace IslandGeometry;
using namespace IslandLayout;

TEST(IslandGeometryTest, TheSizeFollowsModeNotchViewAndChat)
{
    EXPECT_EQ(islandSize(IslandMode::hidden, IslandView::overview, 80, 24, 0), QSizeF(80, 24));
    EXPECT_EQ(islandSize(IslandMode::compact, IslandView::prompt, 200, 38, 9), QSizeF(360, 38));
    for (const auto &[view, chatCount, height] :
         {std::tuple(IslandView::overview, 5, 160), std::tuple(IslandView::mail, 0, 240),
          std::tuple(IslandView::prompt, 0, 240), std::tuple(IslandView::prompt, 1, 280),
          std::tuple(IslandView::prompt, 2, 300), std::tuple(IslandView::prompt, 9, 300)}) {
        EXPECT_EQ(islandSize(IslandMode::expanded, view, 184, 32, chatCount), QSizeF(640, height))
            << rawText(view).toStdString() << ' ' << chatCount;
    }
}

TEST(IslandGeometryTest, TheMascotHasItsPlaceInEveryViewAndMode)
{
    const auto place
        = [](IslandMode mode, IslandView view, QSizeF size, bool hasNotch, double progress = 0) {
              return mascotPlace(mode, view, size, hasNotch, progress);
          };
    using enum IslandMode;
    using enum IslandView;
    EXPECT_EQ(place(expanded, overview, {640, 160}, true), (MascotPlace{{68, 101}, 58, 1}));
    EXPECT_EQ(place(expanded, prompt, {640, 240}, true), (MascotPlace{{52, 141}, 44, 1}));
    EXPECT_EQ(place(expanded, uploading, {640, 160}, true, 1), (MascotPlace{{562, 118}, 20, 1}));
    EXPECT_EQ(place(expanded, greeting, {640, 150}, true).diameter, 0);
    EXPECT_EQ(place(hidden, overview, {184, 32}, true), (MascotPlace{{46, 16}, 6, 0}));
    EXPECT_EQ(place(hidden, overview, {80, 24}, false), (MascotPlace{{40, 12}, 18, 1}));
    EXPECT_EQ(place(hidden, overview, {80, 4}, false).diameter, 0);
    EXPECT_EQ(place(compact, overview, {344, 32}, true), (MascotPlace{{40, 16}, 20, 1}));
}

TEST(IslandGeometryTest, TheFirstScreenWithANotchIsChosen)
{
    ScreenInfo second = FakeScreens::notched();
    second.safeAreaTop = 40;
    const FakeScreens screens({FakeScreens::plain(), FakeScreens::notched(), second});
    EXPECT_EQ(notchScreen(screens), FakeScreens::notched());
    EXPECT_EQ(notchScreen(FakeScreens()), std::nullopt);
    EXPECT_EQ(notchScreen(FakeScreens::none()), std::nullopt);
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
