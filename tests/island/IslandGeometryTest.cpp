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

TEST(IslandGeometryTest, TheSizeFollowsModeNotchViewAndChat)
{
    EXPECT_EQ(islandSize(IslandMode::hidden, IslandView::overview, 80, 24, 0), QSizeF(80, 24));
    EXPECT_EQ(islandSize(IslandMode::compact, IslandView::prompt, 200, 38, 9), QSizeF(360, 38));
    const struct
    {
        IslandView view;
        qsizetype chatCount;
        double height;
    } rows[] = {
        {IslandView::overview, 5, 160}, {IslandView::choose, 0, 176}, {IslandView::mail, 0, 240},
        {IslandView::greeting, 0, 150}, {IslandView::prompt, 0, 240}, {IslandView::prompt, 1, 280},
        {IslandView::prompt, 2, 300},   {IslandView::prompt, 9, 300},
    };
    for (const auto &row : rows) {
        EXPECT_EQ(expandedSize(row.view, row.chatCount), QSizeF(640, row.height))
            << rawText(row.view).toStdString() << ' ' << row.chatCount;
    }
}

TEST(IslandGeometryTest, TheMascotHasItsPlaceInEveryViewAndMode)
{
    const struct
    {
        IslandView view;
        double uploadProgress;
        MascotPlace place;
    } open[] = {
        {IslandView::overview, 0, {{68, 101}, 58, 1}},
        {IslandView::mail, 0, {{56, 141}, 46, 1}},
        {IslandView::prompt, 0, {{52, 141}, 44, 1}},
        {IslandView::upload, 0, {{140, 104}, 62, 1}},
        {IslandView::uploading, 0, {{36, 118}, 20, 1}},
        {IslandView::uploading, 1, {{562, 118}, 20, 1}},
    };
    for (const auto &row : open)
        EXPECT_EQ(expandedPlace(row.view, row.uploadProgress), row.place)
            << rawText(row.view).toStdString();
    EXPECT_EQ(expandedPlace(IslandView::greeting).diameter, 0);

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

TEST(IslandGeometryTest, TheIslandFitsTheNotchOrTheBarOfItsScreen)
{
    const auto notched = [](std::optional<double> left, std::optional<double> right) {
        ScreenInfo screen = FakeScreens::notched();
        screen.auxiliaryTopLeftWidth = left;
        screen.auxiliaryTopRightWidth = right;
        return screen;
    };
    const struct
    {
        ScreenInfo screen;
        double barHeight;
        IslandScreenGeometry geometry;
    } rows[] = {
        {FakeScreens::notched(), 24, {200, 38, true}},
        {notched(std::nullopt, 656), 24, {184, 38, true}},
        {notched(756, 756), 24, {184, 38, true}},
        {notched(800, 800), 24, {184, 38, true}},
        {notched(0, 0), 24, {184, 38, true}},
        {notched(0, 1), 24, {1511, 38, true}},
        {FakeScreens::plain(30), 22, {80, 24, false}},
        {FakeScreens::plain(18), 22, {80, 18, false}},
        {FakeScreens::plain(0), 22, {80, 22, false}},
        {FakeScreens::plain(0), 40, {80, 24, false}},
    };
    for (const auto &row : rows)
        EXPECT_EQ(screenGeometry(row.screen, row.barHeight), row.geometry) << "row " << &row - rows;
}

} // namespace

} // namespace tirlo
