#include "AfterGreeting.h"

#include <QMouseEvent>
#include <QTest>
#include <QWidget>

using namespace tirlo::e2e;

namespace {

/// A window of another program that counts the presses it gets.
class Underneath : public QWidget
{
public:
    bool activateOn(const QRect &place)
    {
        setGeometry(place);
        show();
        activateWindow();
        return QTest::qWaitForWindowActive(this);
    }

    int presses = 0;

protected:
    void mousePressEvent(QMouseEvent *) override { ++presses; }
};

TEST(StartTest, ThePanelNeitherTakesTheFocusNorClicksBesideTheIsland)
{
    Underneath window;
    ASSERT_TRUE(window.activateOn(QRect(0, 0, 1280, 800)));
    const Program program{TIRLO_PROGRAM};
    ASSERT_TRUE(program.isReady());
    const Agent agent{program.hookScript(), "session-1", "/src/lighthouse"};
    const auto request = agent.askFor("Bash", {{"command", "make"}});
    ASSERT_TRUE(program.waitForText("needs permission"));
    ASSERT_TRUE(waitForWidth(openWidth));
    EXPECT_TRUE(window.isActiveWindow()) << "the island opened over a window that has the keyboard";

    // The panel reaches from x 280 to 1000 and to y 320, the open island from 320 to 960 and to
    // 160.
    for (const QPoint beside :
         {QPoint(300, 80), QPoint(980, 80), QPoint(640, 240), QPoint(322, 158)}) {
        const int before = window.presses;
        clickAt(beside.x(), beside.y());
        EXPECT_TRUE(waitUntil([&] { return window.presses == before + 1; }, 2000))
            << beside.x() << "," << beside.y();
    }

    const int before = window.presses;
    ASSERT_TRUE(program.clickButton("Deny"));
    ASSERT_TRUE(request->waitForEnd());
    ASSERT_TRUE(program.waitForNoText("needs permission"));
    EXPECT_EQ(window.presses, before);
    EXPECT_TRUE(window.isActiveWindow()) << "a click on the island took the keyboard away";
}

using PanelTest = AfterGreeting;

TEST_F(PanelTest, TheChatTakesTheKeyboardAndTheWindowBeforeGetsItBack)
{
    Underneath window;
    ASSERT_TRUE(window.activateOn(QRect(200, 400, 600, 300)));
    ASSERT_TRUE(open());
    EXPECT_TRUE(window.isActiveWindow());
    ASSERT_TRUE(program.clickButton("Chat", "page tab"));
    EXPECT_TRUE(waitUntil([&] { return !window.isActiveWindow(); }));

    // A card without a text field hands it back at once.
    ASSERT_TRUE(editor.send("Stop"));
    EXPECT_TRUE(waitUntil([&] { return window.isActiveWindow(); }));
    ASSERT_TRUE(program.clickButton("Dismiss"));
    EXPECT_TRUE(waitForWidth(compactWidth));
}

} // namespace
