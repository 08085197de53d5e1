#include "IslandFixture.h"

using namespace tirlo;

namespace {

using IslandWindowControllerTest = IslandFixture;

TEST_F(IslandWindowControllerTest, PanelHangsAtTheTopCentreOfItsScreen)
{
    EXPECT_EQ(controller.panel().geometry(), QRect(360, 0, 720, 320));
    EXPECT_FALSE(state.hasNotch);
}

TEST_F(IslandWindowControllerTest, InputRegionIsTheOutlineAndFollowsItOnChangeOnly)
{
    point(onTheTab);
    show();
    ASSERT_FALSE(shape.regions.empty());
    EXPECT_EQ(shape.regions.back().boundingRect(), QRect(240, 0, 240, 24));
    const auto count = shape.regions.size();
    island.show(IslandView::note);
    EXPECT_EQ(shape.regions.size(), count) << "a closed island looks the same on every view";

    island.open(IslandView::note);
    EXPECT_EQ(shape.regions.back().boundingRect(), QRect(40, 0, 640, 160));
    island.show(IslandView::prompt);
    state.chatHistory = {ChatMessage{}};
    EXPECT_EQ(shape.regions.back().boundingRect().height(), 280);
}

} // namespace
