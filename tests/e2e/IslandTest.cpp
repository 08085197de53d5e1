#include "AfterGreeting.h"

#include <csignal>

using namespace tirlo::e2e;

namespace {

/// The island as the user sees and moves it, with real pointer and keys.
using IslandTest = AfterGreeting;

TEST_F(IslandTest, AClickOpensOnEveryDesktopAndEscapeCloses)
{
    QProcess::execute("xdotool", {"set_num_desktops", "2"});
    QProcess::execute("xdotool", {"set_desktop", "1"});
    EXPECT_TRUE(open());
    EXPECT_TRUE(program.waitForText("VS Code"));
    movePointer(640, 700);
    QProcess::execute("xdotool", {"key", "Escape"});
    EXPECT_TRUE(waitForWidth(compactWidth));
    QProcess::execute("xdotool", {"set_desktop", "0"});
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
    EXPECT_TRUE(editor.send("SessionStart"));
    EXPECT_TRUE(program.waitForText("lighthouse")) << "the first still has the socket";

    ASSERT_EQ(kill(pid_t(program.processId()), SIGKILL), 0);
    ASSERT_TRUE(waitUntil([&] { return !program.isRunning(); }));
    EXPECT_TRUE(program.start()) << "a killed run is no obstacle";
}

} // namespace
