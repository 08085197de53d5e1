#include "e2e/kit/Desktop.h"
#include "platform/KeyCodes.h"
#include "platform/linux/X11.h"
#include "platform/linux/XcbHotkey.h"
#include "support/ManualQueue.h"

#include <QLineEdit>
#include <QProcess>
#include <QTest>

#include <gtest/gtest.h>

using namespace tirlo;
using namespace tirlo::e2e;

namespace {

const KeyPress shiftN{45, ModifierBits::shift};

/// Another program on the X server.
struct OtherProgram
{
    ~OtherProgram() { xcb_disconnect(connection); }

    /// Waits until the server has done what it was told.
    void sync() const
    {
        const auto cookie = xcb_get_input_focus(connection);
        const XReply<xcb_get_input_focus_reply_t> reply(
            xcb_get_input_focus_reply(connection, cookie, nullptr));
    }

    xcb_connection_t *connection = xcb_connect(nullptr, nullptr);
};

class HotkeyTest : public testing::Test
{
protected:
    void SetUp() override
    {
        QObject::connect(&hotkey, &Hotkey::pressed, [this] { ++presses; });
        field.setGeometry(600, 100, 200, 40);
        field.show();
        field.activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&field));
    }

    /// What the field gets of these actions of xdotool.
    QString typed(const QString &actions)
    {
        field.clear();
        QProcess::execute("xdotool", (actions + " key period").split(' '));
        waitUntil([this] { return field.text().endsWith('.'); });
        QCoreApplication::processEvents();
        return field.text().chopped(1);
    }

    QLineEdit field;
    ManualQueue queue;
    XcbHotkey hotkey{queue};
    int presses = 0;
};

TEST_F(HotkeyTest, ItComesWhateverLocksAreOnAndItsLetterReachesNoWindow)
{
    hotkey.hold(shiftN);
    EXPECT_EQ(typed("key shift+n key n key shift+b"), "nB");
    EXPECT_EQ(presses, 1) << "with exactly these modifiers";
    EXPECT_EQ(typed("key Num_Lock key shift+n key Caps_Lock key shift+n key Num_Lock key shift+n "
                    "key Caps_Lock"),
              "");
    EXPECT_EQ(presses, 4);
    EXPECT_EQ(typed("keydown shift keydown n sleep 1 keyup n keyup shift"), "");
    EXPECT_EQ(presses, 5) << "holding it down is one press";

    hotkey.hold(KeyPress{11, ModifierBits::shift});
    EXPECT_EQ(typed("key shift+n key shift+b"), "N");
    for (const auto &nothing : {std::optional<KeyPress>(), std::optional(KeyPress{11, 0x10000}),
                                std::optional(KeyPress{63, 0}), std::optional(KeyPress{9999, 0})}) {
        hotkey.hold(nothing);
        EXPECT_EQ(typed("key shift+b"), "B");
    }
    EXPECT_EQ(presses, 6);
}

TEST_F(HotkeyTest, OneThatAnotherProgramHasIsToldAndTriedAgain)
{
    std::optional<OtherProgram> other(std::in_place);
    xcb_grab_key(other->connection, false, X11().root(), XCB_MOD_MASK_SHIFT,
                 xcb_keycode_t(*KeyCodes::toScanCode(shiftN.keyCode)), XCB_GRAB_MODE_ASYNC,
                 XCB_GRAB_MODE_ASYNC);
    other->sync();
    hotkey.hold(shiftN);
    EXPECT_TRUE(hotkey.isTaken());
    EXPECT_EQ(typed("key Num_Lock key shift+n key Num_Lock"), "N") << "it has all of it or nothing";
    queue.advance(60.5);
    EXPECT_TRUE(hotkey.isTaken());
    hotkey.hold(std::nullopt);
    EXPECT_FALSE(hotkey.isTaken());
    hotkey.hold(shiftN);
    other.reset();
    queue.advance(60.5);
    EXPECT_FALSE(hotkey.isTaken());
    EXPECT_EQ(typed("key shift+n"), "");
    EXPECT_EQ(presses, 1);
}

TEST_F(HotkeyTest, ALockThatTheKeyboardGetsLaterCountsToo)
{
    hotkey.hold(shiftN);
    const OtherProgram other;
    const XReply<xcb_get_modifier_mapping_reply_t> map(xcb_get_modifier_mapping_reply(
        other.connection, xcb_get_modifier_mapping(other.connection), nullptr));
    constexpr xcb_keycode_t scrollLock = 78;
    constexpr int thirdModifier = 5;
    xcb_keycode_t *keys = xcb_get_modifier_mapping_keycodes(map.get());
    keys[thirdModifier * map->keycodes_per_modifier] = scrollLock;
    xcb_set_modifier_mapping(other.connection, map->keycodes_per_modifier, keys);
    other.sync();
    rest(300);
    EXPECT_EQ(typed("key Scroll_Lock key shift+n key Scroll_Lock"), "");
    EXPECT_EQ(presses, 1);
}

} // namespace
