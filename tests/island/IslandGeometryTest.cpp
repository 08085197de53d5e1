#include "island/IslandGeometry.h"
#include "core/IslandConst.h"
#include "core/model/RawText.h"
#include "support/FakeScreens.h"

#include <gtest/gtest.h>

namespace tirlo {

namespace {

using namespace IslandGeometry;

QSizeF expandedSize(IslandView view, qsizetype chatCount = 0)
{
    return islandSize(IslandMode::expanded, view, 184, 32, chatCount);
}

MascotPlace expandedPlace(IslandView view, double uploadProgress = 0)
{
    return mascotPlace(IslandMode::expanded, view, expandedSize(view), true, uploadProgress);
}

TEST(IslandGeometryTest, ClosedSizesFollowTheNotch)
{
    EXPECT_EQ(islandSize(IslandMode::hidden, IslandView::overview, 80, 24, 0), QSizeF(80, 24));
    EXPECT_EQ(islandSize(IslandMode::compact, IslandView::prompt, 200, 38, 9), QSizeF(360, 38));
}

TEST(IslandGeometryTest, EveryViewHasItsHeightWhenExpanded)
{
    for (const IslandView view : allCases<IslandView>()) {
        double height = 160;
        if (view == IslandView::upload || view == IslandView::uploading
            || view == IslandView::choose)
            height = 176;
        else if (view == IslandView::mail || view == IslandView::prompt)
            height = 240;
        else if (view == IslandView::greeting)
            height = 150;
        EXPECT_EQ(expandedSize(view), QSizeF(640, height)) << rawText(view).toStdString();
    }
}

TEST(IslandGeometryTest, PromptGrowsWithTheChatUpToItsCeiling)
{
    EXPECT_EQ(expandedSize(IslandView::prompt, 0).height(), 240);
    EXPECT_EQ(expandedSize(IslandView::prompt, 1).height(), 280);
    EXPECT_EQ(expandedSize(IslandView::prompt, 2).height(), 300);
    EXPECT_EQ(expandedSize(IslandView::prompt, 1000).height(), 300);
    EXPECT_EQ(expandedSize(IslandView::overview, 5).height(), 160);
}

TEST(IslandGeometryTest, CornersAreRounderWhenExpanded)
{
    EXPECT_EQ(islandShape(IslandMode::hidden, {184, 32}),
              (IslandShape{.width = 184, .height = 32, .cornerRadius = 14, .topRadius = 0}));
    EXPECT_EQ(islandShape(IslandMode::compact, {344, 32}).cornerRadius, 14);
    EXPECT_EQ(islandShape(IslandMode::expanded, {640, 160}).cornerRadius, 22);
}

TEST(IslandGeometryTest, MascotStandsInTheMiddleOfTheCardAreaUnlessTheViewSaysOtherwise)
{
    EXPECT_EQ(expandedPlace(IslandView::overview), (MascotPlace{{68, 101}, 58, 1}));
    EXPECT_EQ(expandedPlace(IslandView::mail), (MascotPlace{{56, 141}, 46, 1}));
    EXPECT_EQ(expandedPlace(IslandView::prompt), (MascotPlace{{52, 141}, 44, 1}));
    EXPECT_EQ(expandedPlace(IslandView::upload), (MascotPlace{{140, 104}, 62, 1}));
    EXPECT_EQ(expandedPlace(IslandView::greeting).diameter, 0);
}

TEST(IslandGeometryTest, MascotRidesTheProgressBar)
{
    EXPECT_EQ(expandedPlace(IslandView::uploading, 0), (MascotPlace{{36, 118}, 20, 1}));
    EXPECT_EQ(expandedPlace(IslandView::uploading, 1).centre, QPointF(562, 118));
}

TEST(IslandGeometryTest, ClosedMascotShrinksWithTheIslandAndHidesInANotch)
{
    const auto closed = [](IslandMode mode, double width, double height, bool hasNotch) {
        return mascotPlace(mode, IslandView::overview, {width, height}, hasNotch, 0);
    };
    EXPECT_EQ(closed(IslandMode::hidden, 184, 32, true), (MascotPlace{{46, 16}, 6, 0}));
    EXPECT_EQ(closed(IslandMode::hidden, 80, 24, false), (MascotPlace{{40, 12}, 18, 1}));
    EXPECT_EQ(closed(IslandMode::hidden, 80, 4, false).diameter, 0);
    EXPECT_EQ(closed(IslandMode::compact, 344, 32, true), (MascotPlace{{40, 16}, 20, 1}));
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

TEST(IslandGeometryTest, NotchIsMeasuredBetweenItsSideAreas)
{
    EXPECT_EQ(screenGeometry(FakeScreens::notched(), 24), (IslandScreenGeometry{200, 38, true}));
}

TEST(IslandGeometryTest, ImplausibleNotchWidthsGiveWay)
{
    const auto widthWith = [](std::optional<double> left, std::optional<double> right) {
        ScreenInfo screen = FakeScreens::notched();
        screen.auxiliaryTopLeftWidth = left;
        screen.auxiliaryTopRightWidth = right;
        return screenGeometry(screen, 24).notchWidth;
    };
    EXPECT_EQ(widthWith(std::nullopt, std::nullopt), 184);
    EXPECT_EQ(widthWith(656, std::nullopt), 184);
    EXPECT_EQ(widthWith(std::nullopt, 656), 184);
    EXPECT_EQ(widthWith(756, 756), 184) << "nothing between the areas";
    EXPECT_EQ(widthWith(800, 800), 184) << "areas overlap";
    EXPECT_EQ(widthWith(0, 0), 184) << "as wide as the screen";
    EXPECT_EQ(widthWith(0, 1), 1511);
}

TEST(IslandGeometryTest, PlainScreenGetsATabNoHigherThanItsBar)
{
    EXPECT_EQ(screenGeometry(FakeScreens::plain(30), 22), (IslandScreenGeometry{80, 24, false}));
    EXPECT_EQ(screenGeometry(FakeScreens::plain(18), 22), (IslandScreenGeometry{80, 18, false}));
    EXPECT_EQ(screenGeometry(FakeScreens::plain(0), 22), (IslandScreenGeometry{80, 22, false}));
    EXPECT_EQ(screenGeometry(FakeScreens::plain(0), 40), (IslandScreenGeometry{80, 24, false}));
}

} // namespace

} // namespace tirlo
