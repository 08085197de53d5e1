#include "kit/Island.h"
#include "kit/Agent.h"
#include "kit/Desktop.h"
#include "kit/Program.h"

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

    Program program{TIRLO_PROGRAM};
};

TEST_F(IslandTest, AClickOpensAndEscapeCloses)
{
    clickAt(screenMiddle(), 10);
    EXPECT_TRUE(waitForWidth(openWidth));
    EXPECT_TRUE(program.waitForText("VS Code"));
    movePointer(640, 700);
    QProcess::execute("xdotool", {"key", "Escape"});
    EXPECT_TRUE(waitForWidth(compactWidth));
}

TEST_F(IslandTest, ASecondStartOpensTheFirstUntilThatIsKilled)
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
    EXPECT_TRUE(program.waitForText("lighthouse")) << "the first still has the socket";

    ASSERT_EQ(kill(pid_t(program.processId()), SIGKILL), 0);
    ASSERT_TRUE(waitUntil([&] { return !program.isRunning(); }));
    EXPECT_TRUE(program.restart()) << "a killed run is no obstacle";
}

} // namespace
