#include "kit/Island.h"
#include "kit/AccessibleTree.h"
#include "kit/Agent.h"
#include "kit/Desktop.h"
#include "kit/Program.h"

#include <QFile>
#include <QProcess>

#include <gtest/gtest.h>

#include <csignal>

using namespace tirlo::e2e;

namespace {

/// The island as the user sees and moves it, with real pointer and keys, after the greeting.
class IslandTest : public testing::Test
{
protected:
    void SetUp() override
    {
        movePointer(640, 700);
        ASSERT_TRUE(program.isReady());
        ASSERT_TRUE(waitForWidth(openWidth)) << "a start opens the island for the greeting";
        ASSERT_TRUE(waitForWidth(compactWidth, 10000)) << "the greeting folds away by itself";
    }

    static void press(const char *keys) { QProcess::execute("xdotool", {"key", keys}); }

    Program program{TIRLO_PROGRAM};
};

TEST_F(IslandTest, AClickOpensAndEscapeCloses)
{
    clickAt(screenMiddle(), 10);
    EXPECT_TRUE(waitForWidth(openWidth));
    EXPECT_TRUE(showsText(program.processId(), "VS Code"));
    movePointer(640, 700);
    press("Escape");
    EXPECT_TRUE(waitForWidth(compactWidth));

    // Nothing held: the key of another program's shortcut leaves the island alone.
    press("shift+super+n");
    EXPECT_FALSE(waitForWidth(openWidth, 800)) << "the hotkey is off at first";
}

TEST_F(IslandTest, TheHotkeyOpensWhenTheSettingsSaySo)
{
    ASSERT_TRUE(program.stop());
    QFile settings(program.home() + "/Library/Application Support/Skerry/settings.json");
    ASSERT_TRUE(settings.open(QIODevice::WriteOnly));
    settings.write(R"({"hotkeyEnabled": true})");
    settings.close();
    ASSERT_TRUE(program.restart());
    ASSERT_TRUE(waitForWidth(openWidth));
    ASSERT_TRUE(waitForWidth(compactWidth, 10000));
    press("shift+super+n");
    EXPECT_TRUE(waitForWidth(openWidth));
}

TEST_F(IslandTest, ASecondStartOpensTheFirstAndEnds)
{
    QProcess second;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert("HOME", program.home());
    second.setProcessEnvironment(environment);
    second.start(TIRLO_PROGRAM, QStringList());
    ASSERT_TRUE(second.waitForFinished(5000));
    EXPECT_EQ(second.exitCode(), 0);
    EXPECT_TRUE(waitForWidth(openWidth));

    const Agent agent(program.hookScript(), "session-1", "/src/lighthouse");
    EXPECT_TRUE(agent.send("SessionStart"));
    EXPECT_TRUE(waitUntil([&] { return showsText(program.processId(), "lighthouse"); }))
        << "the first still has the socket";
}

TEST_F(IslandTest, AKilledRunIsNoObstacle)
{
    ASSERT_EQ(kill(pid_t(program.processId()), SIGKILL), 0);
    ASSERT_TRUE(waitUntil([&] { return !program.isRunning(); }));
    EXPECT_TRUE(program.restart());
}

} // namespace
