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

void xdotool(const QString &actions)
{
    QProcess::execute("xdotool", actions.split(' '));
}

/// Another program, which has grabbed the key.
class OtherHolder
{
public:
    explicit OtherHolder(const KeyPress &key)
    {
        xcb_grab_key(m_connection, false, X11().root(),
                     std::uint16_t(KeyCodes::modifiersToX(key.modifiers)),
                     xcb_keycode_t(*KeyCodes::toScanCode(key.keyCode)), XCB_GRAB_MODE_ASYNC,
                     XCB_GRAB_MODE_ASYNC);
        sync();
    }
    ~OtherHolder() { xcb_disconnect(m_connection); }

    /// Lets the Scroll Lock key switch a modifier of its own, which it does not at first.
    void addScrollLock()
    {
        const xcb_keycode_t scrollLock = 78;
        auto cookie = xcb_get_modifier_mapping(m_connection);
        const XReply<xcb_get_modifier_mapping_reply_t> map(
            xcb_get_modifier_mapping_reply(m_connection, cookie, nullptr));
        constexpr int thirdModifier = 5;
        xcb_keycode_t *keys = xcb_get_modifier_mapping_keycodes(map.get());
        keys[thirdModifier * map->keycodes_per_modifier] = scrollLock;
        xcb_set_modifier_mapping(m_connection, map->keycodes_per_modifier, keys);
        sync();
    }

private:
    /// Waits until the server has done what it was told.
    void sync()
    {
        const XReply<xcb_get_input_focus_reply_t> reply(
            xcb_get_input_focus_reply(m_connection, xcb_get_input_focus(m_connection), nullptr));
    }

    xcb_connection_t *m_connection = xcb_connect(nullptr, nullptr);
};

class HotkeyTest : public testing::Test
{
protected:
    HotkeyTest()
    {
        QObject::connect(&hotkey, &Hotkey::pressed, [this] { ++presses; });
    }

    void SetUp() override
    {
        field.setGeometry(600, 100, 200, 40);
        field.show();
        field.activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&field));
    }

    /// What the field has got, once this and all before has come; it is empty afterwards.
    QString typed(const QString &actions)
    {
        xdotool(actions + " key period");
        waitUntil([this] { return field.text().endsWith('.'); });
        QCoreApplication::processEvents();
        const QString text = field.text();
        field.clear();
        return text;
    }

    QLineEdit field;
    ManualQueue queue;
    XcbHotkey hotkey{queue};
    int presses = 0;
};

TEST_F(HotkeyTest, ItComesWhateverLocksAreOnAndItsLetterReachesNoWindow)
{
    EXPECT_EQ(typed("key shift+n"), "N.");
    hotkey.hold(shiftN);
    EXPECT_EQ(typed("key shift+n key n key shift+b"), "nB.");
    EXPECT_EQ(presses, 1) << "with exactly these modifiers";
    EXPECT_EQ(typed("key Num_Lock key shift+n key Caps_Lock key shift+n key Num_Lock key shift+n "
                    "key Caps_Lock"),
              ".");
    EXPECT_EQ(presses, 4);
    EXPECT_EQ(typed("keydown shift keydown n sleep 1 keyup n keyup shift"), ".");
    EXPECT_EQ(presses, 5) << "holding it down is one press";

    hotkey.hold(KeyPress{11, ModifierBits::shift});
    EXPECT_EQ(typed("key shift+n key shift+b"), "N.");
    EXPECT_EQ(presses, 6);
    for (const auto &nothing : {std::optional<KeyPress>(), std::optional(KeyPress{11, 0x10000}),
                                std::optional(KeyPress{63, 0}), std::optional(KeyPress{9999, 0})}) {
        hotkey.hold(nothing);
        EXPECT_EQ(typed("key shift+b"), "B.");
    }
    EXPECT_EQ(presses, 6);
}

TEST_F(HotkeyTest, OneThatAnotherProgramHasIsToldAndTriedAgain)
{
    QList<bool> told;
    QObject::connect(&hotkey, &Hotkey::takenChanged, [&](bool isTaken) { told.append(isTaken); });
    std::optional<OtherHolder> other(shiftN);
    hotkey.hold(shiftN);
    EXPECT_TRUE(hotkey.isTaken());
    EXPECT_EQ(typed("key Num_Lock key shift+n key Num_Lock"), "N.")
        << "it has all of it or nothing";
    queue.advance(60.5);
    EXPECT_TRUE(hotkey.isTaken());
    other.reset();
    queue.advance(60.5);
    EXPECT_FALSE(hotkey.isTaken());
    EXPECT_EQ(typed("key shift+n"), ".");
    EXPECT_EQ(presses, 1);
    EXPECT_EQ(told, (QList<bool>{true, false}));

    other.emplace(KeyPress{11, 0});
    hotkey.hold(KeyPress{11, 0});
    EXPECT_TRUE(hotkey.isTaken());
    hotkey.hold(std::nullopt);
    EXPECT_FALSE(hotkey.isTaken());
    queue.advance(1000);
    EXPECT_EQ(told, (QList<bool>{true, false, true, false})) << "what nobody wants is not tried";
}

TEST_F(HotkeyTest, AnotherKeyboardIsFollowed)
{
    hotkey.hold(shiftN);
    OtherHolder(KeyPress{11, 0}).addScrollLock();
    rest(300);
    EXPECT_EQ(typed("key Scroll_Lock key shift+n key Scroll_Lock"), ".");
    EXPECT_EQ(presses, 1);
}

} // namespace
