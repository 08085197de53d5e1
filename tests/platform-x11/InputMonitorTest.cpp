#include "OtherApplication.h"

#include "e2e/kit/Desktop.h"
#include "platform/KeyCodes.h"
#include "platform/linux/X11.h"
#include "platform/linux/XcbInputMonitor.h"

#include <QLineEdit>
#include <QProcess>
#include <QTest>

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <numeric>

using namespace tirlo;
using namespace tirlo::e2e;
using tirlo::x11test::OtherApplication;

namespace {

void xdotool(const QString &actions)
{
    QProcess::execute("xdotool", actions.split(' '));
}

/// Gives each of the first buttons its number and the rest, of the wheel and others, their own.
void setOrder(const X11 &x11, const std::array<std::uint8_t, 3> &order)
{
    const auto cookie = xcb_get_pointer_mapping(x11.connection());
    const XReply<xcb_get_pointer_mapping_reply_t> reply(
        xcb_get_pointer_mapping_reply(x11.connection(), cookie, nullptr));
    std::vector<std::uint8_t> all(reply->map_len);
    std::iota(all.begin(), all.end(), std::uint8_t(1));
    std::ranges::copy(order, all.begin());
    xcb_set_pointer_mapping(x11.connection(), std::uint8_t(all.size()), all.data());
    xcb_flush(x11.connection());
}

class InputMonitorTest : public testing::Test
{
protected:
    InputMonitorTest()
    {
        QObject::connect(&monitor, &InputMonitor::keyDown, [this](const KeyPress &key) {
            const bool isModifier = key.keyCode >= 54 && key.keyCode <= 62;
            if (!isModifier)
                keys.append(key);
        });
        QObject::connect(&monitor, &InputMonitor::leftButtonUp, [this] { ++releases; });
    }

    void SetUp() override { ASSERT_TRUE(other.isActive()); }

    /// What was pressed, once the reports so far are in; each key ends with Escape.
    QList<KeyPress> keysUntilEscape()
    {
        xdotool("key Escape");
        waitUntil([this] { return keys.contains(KeyPress{53, 0}); });
        return keys;
    }

    OtherApplication other{"Other", QRect(100, 100, 400, 400)};
    XcbInputMonitor monitor;
    QList<KeyPress> keys;
    int releases = 0;
};

TEST_F(InputMonitorTest, KeysForOtherProgramsComeWithTheModifiersOfTheirMoment)
{
    // Each chord is over before the first report of it can be read.
    for (const char *key :
         {"shift+super+n", "ctrl+alt+shift+b", "n", "Caps_Lock", "shift+super+n", "Caps_Lock"})
        xdotool(QString("key --delay 0 ") + key);

    const QList<KeyPress> expected{
        {45, ModifierBits::shift | ModifierBits::command},
        {11, ModifierBits::control | ModifierBits::option | ModifierBits::shift},
        {45, 0},
        {45, ModifierBits::shift | ModifierBits::command},
        {53, 0}};
    EXPECT_EQ(keysUntilEscape(), expected);
}

TEST_F(InputMonitorTest, KeysForOurOwnWindowsGoThereAndNowhereElse)
{
    QLineEdit field;
    field.setGeometry(600, 100, 200, 40);
    field.show();
    field.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&field));
    xdotool("key n");
    ASSERT_TRUE(waitUntil([&] { return field.text() == "n"; })) << "the field has lost its keys";
    clickAt(300, 300);
    ASSERT_TRUE(waitUntil([&] { return other.isActive() && !field.isActiveWindow(); }));
    xdotool("key b");
    EXPECT_EQ(keysUntilEscape(), (QList<KeyPress>{{11, 0}, {53, 0}}));
    EXPECT_EQ(field.text(), "n");
}

TEST_F(InputMonitorTest, AReleaseCountsWhereItsPressWasNotOurs)
{
    QWidget window;
    window.setGeometry(600, 100, 300, 300);
    window.show();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
    const QString overOther("mousemove 300 300 ");
    const QString overOurs("mousemove 750 250 ");
    using Order = std::array<std::uint8_t, 3>;
    static constexpr Order leftHanded{3, 2, 1};
    const X11 x11;
    const struct
    {
        const char *what;
        QString actions;
        int expected;
        Order order{1, 2, 3};
    } cases[]{
        {"a click on another window", overOther + "click 1", 1},
        {"a click on ours", overOurs + "click 1", 0},
        {"a drag out of ours", overOurs + "mousedown 1 " + overOther + "mouseup 1", 0},
        {"a drag into ours", overOther + "mousedown 1 " + overOurs + "mouseup 1", 1},
        {"the right button between a press on ours and its release",
         overOurs + "mousedown 1 " + overOther + "click 3 mouseup 1", 0},
        {"other buttons and the wheel", overOther + "click 2 click 4", 0},
        {"the right one of a left-handed mouse", overOther + "click 1", 0, leftHanded},
        {"the left one of a left-handed mouse", overOther + "click 3", 1, leftHanded},
        {"a click on another window at the end", overOther + "click 1", 1},
    };
    for (const auto &step : cases) {
        setOrder(x11, step.order);
        releases = 0;
        xdotool(step.actions);
        waitUntil([&] { return releases > step.expected; }, 150);
        EXPECT_EQ(releases, step.expected) << step.what;
    }
}

} // namespace
