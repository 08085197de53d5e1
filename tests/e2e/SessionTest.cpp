#include "AfterGreeting.h"

#include <QDir>
#include <QJsonArray>

#include <utility>

using namespace tirlo::e2e;

namespace {

const QByteArray answerHead
    = R"({"hookSpecificOutput":{"hookEventName":"PermissionRequest","decision":{)";

constexpr QRect bar(200, 120, 240, 30);
// Left of the card's text, the mascot's white in its middle.
constexpr QRect aroundMascot(20, 60, 96, 84);

/// Agents at work on the island, through the real hook script; each stage leaves a picture.
class SessionTest : public AfterGreeting
{
protected:
    SessionTest() { QDir().mkpath(TIRLO_PICTURES); }

    /// Whether so much of the island's part comes to be of that colour.
    static bool waitForColour(const QRect &part, int enough, bool (*fits)(const QColor &))
    {
        return waitUntil([&] { return countPixels(part, fits) > enough; }, patience);
    }

    static bool isBlue(const QColor &c) { return c.blue() > c.red() + 12; }
    static bool isAmber(const QColor &c) { return c.red() > c.blue() + 12; }
    static bool isRed(const QColor &c) { return c.red() > c.green() + 25; }
    static bool isGreen(const QColor &c) { return c.green() > c.red() + 25; }

    /// Keeps a picture once the card has come to rest; its text may shimmer on and on.
    static void keepPicture(const char *stage)
    {
        rest(1000);
        takePicture(QStringLiteral(TIRLO_PICTURES "/%1.png").arg(QLatin1String(stage)));
    }

    const QJsonObject makeCall{{"command", "make release"}};
};

TEST_F(SessionTest, AWholeSessionIsSeenOnTheIsland)
{
    ASSERT_TRUE(open());
    ASSERT_TRUE(editor.send("SessionStart"));
    EXPECT_TRUE(program.waitForText("lighthouse"));
    EXPECT_TRUE(program.shows("Claude Code"));
    keepPicture("session-1-start");

    ASSERT_TRUE(editor.send("UserPromptSubmit", {{"prompt", "Turn the lamp faster"}}));
    EXPECT_TRUE(program.waitForText("Turn the lamp faster"));
    EXPECT_TRUE(program.waitForText("1/1"));
    keepPicture("session-2-prompt");

    const char *tools[][3] = {{"Grep", "query", "rotationPeriod"},
                              {"Glob", "pattern", "*.c"},
                              {"Read", "file_path", "/src/lighthouse/lamp.c"},
                              {"Read", "file_path", "/src/lighthouse/motor.c"},
                              {"Edit", "file_path", "/src/lighthouse/lamp.c"},
                              {"Bash", "command", "make"},
                              {"Write", "file_path", "/src/lighthouse/lamp_test.c"},
                              {"Bash", "command", "make check"},
                              {"Edit", "file_path", "/src/lighthouse/motor.c"},
                              {"Read", "file_path", "/src/lighthouse/NEWS.md"}};
    for (const auto &[tool, member, value] : tools)
        ASSERT_TRUE(editor.sendTool(tool, {{member, value}})) << tool;
    EXPECT_TRUE(program.waitForText("11/11")) << "the prompt and ten tools";
    EXPECT_TRUE(program.waitForText("NEWS.md"));
    EXPECT_TRUE(waitForColour(aroundMascot, 150, isBlue));
    keepPicture("session-3-tools");

    ASSERT_TRUE(editor.send("Notification", {{"message", "Which lamp do you mean?"}}));
    EXPECT_TRUE(program.waitForText("Which lamp do you mean?"));
    EXPECT_TRUE(program.waitForText("12/12"));
    keepPicture("session-4-question");

    ASSERT_TRUE(editor.send("Notification", {{"message", "You have hit your rate limit."}}));
    EXPECT_TRUE(waitForColour(aroundMascot, 150, isAmber));
    EXPECT_TRUE(program.shows("12/12")) << "it is a mood and no step";
    keepPicture("session-5-rate-limit");

    const auto request = editor.askFor("Bash", {{"command", "make install"}});
    EXPECT_TRUE(program.waitForText("make install"));
    EXPECT_TRUE(program.waitForText("needs permission"));
    keepPicture("session-6-approval");
    ASSERT_TRUE(program.clickButton("Allow"));
    ASSERT_TRUE(request->waitForEnd());
    EXPECT_EQ(request->exitCode(), 0);
    EXPECT_EQ(request->output(), answerHead + R"("behavior":"allow"}}})" + "\n");
    EXPECT_TRUE(program.waitForNoText("needs permission"));

    ASSERT_TRUE(editor.send("StopFailure"));
    EXPECT_TRUE(program.waitForText("Workflow stopped."));
    EXPECT_TRUE(waitForColour(bar, 2000, isRed));
    keepPicture("session-7-failure");

    ASSERT_TRUE(editor.send("Stop", {{"message", "The lamp is twice as fast."}}));
    EXPECT_TRUE(program.waitForText("Claude Code finished"));
    EXPECT_TRUE(program.waitForText("The lamp is twice as fast."));
    EXPECT_TRUE(waitForColour(bar, 2000, isGreen));
    keepPicture("session-8-stop");
    ASSERT_TRUE(program.clickButton("Dismiss"));
    EXPECT_TRUE(waitForWidth(compactWidth, patience));
}

TEST_F(SessionTest, TwoAgentsAtOnceAreKeptApart)
{
    Agent codex(program.hookScript(), "session-2", "/src/harbour", "codex", "xterm");
    ASSERT_TRUE(open());
    std::vector<std::unique_ptr<HookRun>> runs;
    for (const char *event : {"SessionStart", "PreToolUse", "PreToolUse", "PreToolUse"}) {
        for (const auto &[agent, file] : {std::pair(&editor, "lamp.c"), {&codex, "crane.c"}})
            runs.push_back(agent->start(
                event, {{"tool_name", "Read"}, {"tool_input", QJsonObject{{"path", file}}}}));
        for (const auto &run : std::exchange(runs, {}))
            ASSERT_TRUE(run->waitForEnd());
    }

    EXPECT_TRUE(program.waitForText("lamp.c"));
    EXPECT_TRUE(program.waitForText("3/3"));
    EXPECT_FALSE(program.shows("crane.c")) << "the other's steps are its own";
    keepPicture("two-agents-1");
    ASSERT_TRUE(program.clickButton("harbour"));
    EXPECT_TRUE(program.waitForText("crane.c"));
    EXPECT_TRUE(program.waitForText("3/3"));
    EXPECT_TRUE(program.waitForNoText("lamp.c"));
    EXPECT_TRUE(program.button("VS Code"));
    keepPicture("two-agents-2");
}

TEST_F(SessionTest, FiveOthersHaveFourSmallMascots)
{
    ASSERT_TRUE(editor.send("SessionStart"));
    for (const char *name : {"anchor", "buoy", "crane", "dock", "eddy"})
        ASSERT_TRUE(
            Agent(program.hookScript(), name, "/src/port", name, "xterm").send("SessionStart"));

    // At the compact island's right, two by two: each has colour, which the rest has not.
    const auto isColoured = [](const QColor &c) { return c.saturation() > 90 && c.value() > 90; };
    for (const QRect &cell : {QRect(386, 0, 14, 12), QRect(400, 0, 14, 12), QRect(386, 12, 14, 12),
                              QRect(400, 12, 14, 12)})
        EXPECT_TRUE(waitUntil([&] { return countPixels(cell, isColoured) > 10; }, patience))
            << cell.x() << "," << cell.y();
    keepPicture("five-others");
}

TEST_F(SessionTest, AlwaysAndDenyAnswerInTheAgentsWords)
{
    const QJsonObject rule{{"type", "addRules"}};
    for (const auto &[button, answer] :
         {std::pair("Always", R"("behavior":"allow","updatedPermissions":[{"type":"addRules"}])"),
          {"Deny", R"("behavior":"deny","message":"Denied from Tirlo")"}}) {
        const auto request
            = editor.askFor("Bash", makeCall, {{"permission_suggestions", QJsonArray{rule}}});
        ASSERT_TRUE(program.clickButton(button));
        ASSERT_TRUE(request->waitForEnd());
        EXPECT_EQ(request->exitCode(), 0);
        EXPECT_EQ(request->output(), answerHead + answer + "}}}\n");
    }

    // In a terminal the agent asks by itself, when the last card has gone.
    ASSERT_TRUE(program.waitForNoText("needs permission"));
    const Agent terminal(program.hookScript(), "session-3", "/src/x", "", "xterm");
    const auto request = terminal.askFor("Bash", makeCall);
    ASSERT_TRUE(request->waitForEnd(3000));
    EXPECT_EQ(request->exitCode(), 0);
    EXPECT_EQ(request->output().toStdString(), "");
    EXPECT_FALSE(program.button("Allow"));
}

TEST_F(SessionTest, ARequestAnsweredElsewhereLeavesANoteAndCloses)
{
    const auto request = editor.askFor("Bash", makeCall);
    ASSERT_TRUE(program.waitForButton("Allow"));
    request->kill();
    ASSERT_TRUE(program.waitForText("Handled in VS Code."));
    EXPECT_TRUE(program.waitForNoText("needs permission")) << "the card fades and is gone";
    EXPECT_FALSE(program.button("Allow"));
    EXPECT_TRUE(program.waitForNoText("Handled in VS Code."));
}

} // namespace
