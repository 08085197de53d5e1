#include "IslandFixture.h"

#include "platform/KeyCodes.h"

#include <QLineEdit>
#include <QPushButton>

using namespace tirlo;

namespace {

constexpr std::uint16_t escape = 53;
constexpr std::uint16_t letterN = 45;
constexpr std::uint32_t shiftCommand = ModifierBits::shift | ModifierBits::command;

using KeysTest = IslandFixture;

TEST_F(KeysTest, EscapeClosesAnOpenIslandUnlessItIsHeld)
{
    const auto modeAfter = [this](std::uint16_t key, std::uint32_t modifiers = 0) {
        input.pressKey(key, modifiers);
        return state.mode.value();
    };
    island.open(IslandView::overview);
    EXPECT_EQ(modeAfter(letterN), IslandMode::expanded);
    EXPECT_EQ(modeAfter(escape, ModifierBits::shift), IslandMode::compact);
    island.open(IslandView::overview);
    state.isPinned = true;
    EXPECT_EQ(modeAfter(escape), IslandMode::expanded);
    ask();
    state.isPinned = false;
    EXPECT_EQ(modeAfter(escape), IslandMode::expanded);
}

TEST_F(KeysTest, TheHotkeyIsHeldWhileItIsOnAndToldWhenAnotherHasIt)
{
    EXPECT_EQ(hotkey.held, std::nullopt) << "it is off at first";
    state.hotkeyEnabled = true;
    EXPECT_EQ(hotkey.held, (KeyPress{letterN, shiftCommand}));
    state.setHotkey(0, 3);
    EXPECT_EQ(hotkey.held, (KeyPress{3, 0}));
    hotkey.take(true);
    EXPECT_TRUE(state.hotkeyIsTaken.value());
    hotkey.take(false);
    EXPECT_FALSE(state.hotkeyIsTaken.value());
    state.hotkeyEnabled = false;
    EXPECT_EQ(hotkey.held, std::nullopt);
}

TEST_F(KeysTest, TheHotkeyOpensTheOverviewUntilThePointerHasBeenThere)
{
    hotkey.press();
    for (const QPointF place : {away, onTheTab}) {
        point(place);
        queue.advance(1000);
        EXPECT_TRUE(isOpenOn(IslandView::overview));
    }
    island.show(IslandView::note);
    hotkey.press();
    EXPECT_TRUE(isOpenOn(IslandView::note)) << "an open island stays on its card";
    hotkey.press();
    point(away);
    queue.advance(15.1);
    EXPECT_EQ(state.mode.value(), IslandMode::compact);
}

TEST_F(KeysTest, TheLastOtherApplicationIsRemembered)
{
    const RunningApplication nameless{8, {}, QStringLiteral("xterm")};
    windows.activate({7, QStringLiteral("com.microsoft.VSCode"), QStringLiteral("Code")});
    windows.activate(nameless);
    windows.activate({9, ownBundleIdentifier, QStringLiteral("Tirlo")});
    EXPECT_EQ(state.lastExternalApp, nameless);
}

/// The keyboard goes to the island for its text fields and back to where it was.
class KeyboardTest : public IslandFixture
{
protected:
    KeyboardTest()
    {
        auto *content = new QWidget;
        field = new QLineEdit(content);
        field->setGeometry(200, 100, 200, 24);
        button = new QPushButton(content);
        button->setGeometry(450, 100, 80, 24);
        button->setFocusPolicy(Qt::TabFocus);
        controller.setContent(content);
        show();
        leave();
        applications.alive = {editor};
        state.lastExternalApp = editor;
    }

    /// Gives another window the keyboard.
    void leave()
    {
        elsewhere.show();
        elsewhere.activateWindow();
        QCoreApplication::processEvents();
    }

    /// Presses the middle of the control.
    void press(const QWidget &control)
    {
        IslandPanel &panel = controller.panel();
        const QPoint local = control.mapTo(&panel, control.rect().center());
        point(panel.pos() + local);
        QTest::mouseClick(panel.windowHandle(), Qt::LeftButton, Qt::NoModifier, local);
    }

    [[nodiscard]] bool acceptsKeyboard()
    {
        return !(controller.panel().windowHandle()->flags() & Qt::WindowDoesNotAcceptFocus);
    }

    [[nodiscard]] bool hasKeyboard()
    {
        QCoreApplication::processEvents();
        EXPECT_EQ(acceptsKeyboard(), controller.panel().isActiveWindow());
        return acceptsKeyboard();
    }

    QWidget elsewhere;
    const RunningApplication editor{1, QStringLiteral("com.microsoft.VSCode"), {}};
    QLineEdit *field = nullptr;
    QPushButton *button = nullptr;
};

TEST_F(KeyboardTest, TheOpenPromptOrAPressOnATextFieldTakesIt)
{
    island.show(IslandView::prompt);
    EXPECT_FALSE(hasKeyboard()) << "an answer has come to a closed island";
    island.open(IslandView::note);
    press(*button);
    EXPECT_FALSE(hasKeyboard()) << "a button needs none";
    field->setEnabled(false);
    press(*field);
    EXPECT_FALSE(hasKeyboard());
    field->setEnabled(true);
    press(*field);
    EXPECT_TRUE(hasKeyboard());
    EXPECT_TRUE(field->hasFocus());
}

TEST_F(KeyboardTest, AnotherCardOrTheIslandsCloseGivesItBackToTheLastApplication)
{
    island.open(IslandView::overview);
    island.collapse();
    EXPECT_TRUE(applications.activated.empty()) << "it never had the keyboard";

    const std::function<void()> ends[]{
        [this] { island.collapse(); },
        [this] { island.show(IslandView::settings); },
        [this] { Q_EMIT notifications.hookExpand(IslandView::finished); },
    };
    for (const auto &end : ends) {
        SCOPED_TRACE(&end - ends);
        applications.activated.clear();
        island.open(IslandView::prompt);
        ASSERT_TRUE(hasKeyboard());
        end();
        EXPECT_FALSE(acceptsKeyboard());
        leave();
        EXPECT_EQ(applications.activated, std::vector{editor});
    }
}

TEST_F(KeyboardTest, TheHotkeyGivesItToAnOpenIslandFromCardToCardAndBack)
{
    island.open(IslandView::note);
    hotkey.press();
    ASSERT_TRUE(hasKeyboard());
    island.show(IslandView::settings);
    queue.advance(100);
    EXPECT_TRUE(hasKeyboard()) << "it goes round the cards, and holds them open";
    QTest::keyClick(controller.panel().windowHandle(), Qt::Key_Tab);
    QTest::keyClick(controller.panel().windowHandle(), Qt::Key_Down);
    EXPECT_TRUE(button->hasFocus());
    button->hide();
    EXPECT_FALSE(field->hasFocus()) << "what stands beside a control that goes was not chosen";
    QTest::keyClick(controller.panel().windowHandle(), Qt::Key_Escape);
    EXPECT_FALSE(acceptsKeyboard());
    EXPECT_EQ(applications.activated, std::vector{editor});
    leave();
    queue.advance(14);
    EXPECT_TRUE(isOpenOn(IslandView::settings));

    hotkey.press();
    ASSERT_TRUE(hasKeyboard());
    EXPECT_FALSE(field->hasFocus()) << "the focus starts anew";
    hotkey.press();
    leave();
    hotkey.press();
    leave();
    EXPECT_FALSE(acceptsKeyboard()) << "another window was chosen";
    queue.advance(15.1);
    EXPECT_EQ(state.mode.value(), IslandMode::compact);
}

} // namespace
