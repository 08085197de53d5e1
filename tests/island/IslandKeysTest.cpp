#include "IslandFixture.h"

#include "platform/KeyCodes.h"

using namespace tirlo;

namespace {

constexpr std::uint16_t escape = 53;
constexpr std::uint16_t letterN = 45;
constexpr std::uint32_t shiftCommand = ModifierBits::shift | ModifierBits::command;

using IslandKeysTest = IslandFixture;

TEST_F(IslandKeysTest, EscapeClosesAnOpenIslandUnlessItIsHeld)
{
    controller.expand(IslandView::overview);
    input.pressKey(letterN);
    EXPECT_EQ(state.mode.value(), IslandMode::expanded);
    input.pressKey(escape, ModifierBits::shift);
    input.pressKey(escape);
    EXPECT_EQ(state.mode.value(), IslandMode::compact);

    controller.expand(IslandView::overview);
    state.isPinned = true;
    input.pressKey(escape);
    EXPECT_EQ(state.mode.value(), IslandMode::expanded);
    state.isPinned = false;
    wait();
    input.pressKey(escape);
    EXPECT_EQ(state.mode.value(), IslandMode::expanded);
}

TEST_F(IslandKeysTest, TheHotkeyOpensTheOverviewAndIsNoToggle)
{
    input.pressKey(letterN, shiftCommand);
    ASSERT_EQ(state.mode.value(), IslandMode::compact) << "it is off at first";
    state.hotkeyEnabled = true;
    input.pressKey(letterN, shiftCommand | ModifierBits::control);
    input.pressKey(letterN, ModifierBits::shift);
    input.pressKey(escape, shiftCommand);
    EXPECT_EQ(state.mode.value(), IslandMode::compact);

    input.pressKey(letterN, shiftCommand);
    state.view = IslandView::note;
    input.pressKey(letterN, shiftCommand);
    EXPECT_EQ(state.view.value(), IslandView::note);
    EXPECT_EQ(state.mode.value(), IslandMode::expanded);

    state.setHotkey(0, 3);
    state.mode = IslandMode::hidden;
    input.pressKey(3);
    EXPECT_EQ(state.mode.value(), IslandMode::expanded) << "a change is effective at once";
}

TEST_F(IslandKeysTest, TheLastOtherApplicationIsRemembered)
{
    const RunningApplication nameless{8, {}, QStringLiteral("xterm")};
    windows.activate({7, QStringLiteral("com.microsoft.VSCode"), QStringLiteral("Code")});
    windows.activate(nameless);
    windows.activate({9, ownBundleIdentifier, QStringLiteral("Tirlo")});
    EXPECT_EQ(state.lastExternalApp, nameless);
}

} // namespace
