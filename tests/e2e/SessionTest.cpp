#include "kit/Agent.h"
#include "kit/Desktop.h"
#include "kit/Island.h"
#include "kit/Program.h"

#include <QDir>
#include <QElapsedTimer>
#include <QJsonArray>

#include <gtest/gtest.h>

#include <array>
#include <string>
#include <utility>

using namespace tirlo::e2e;

namespace {

const std::string allowAnswer
    = R"({"hookSpecificOutput":{"hookEventName":"PermissionRequest","decision":{"behavior":"allow"}}})"
      "\n";
const std::string denyAnswer
    = R"({"hookSpecificOutput":{"hookEventName":"PermissionRequest","decision":{"behavior":"deny",)"
      R"("message":"Denied from Tirlo"}}})"
      "\n";
const std::string alwaysAnswer
    = R"({"hookSpecificOutput":{"hookEventName":"PermissionRequest","decision":{"behavior":"allow",)"
      R"("updatedPermissions":[{"rules":[{"ruleContent":"make:*","toolName":"Bash"}],)"
      R"("type":"addRules"}]}}})"
      "\n";

const QJsonObject suggestions{
    {"permission_suggestions",
     QJsonArray{QJsonObject{
         {"type", "addRules"},
         {"rules", QJsonArray{QJsonObject{{"toolName", "Bash"}, {"ruleContent", "make:*"}}}}}}}};

/// A stage whose pointer is off the island before the program starts, which would else fold its
/// greeting away.
class PointerAway : public testing::Test
{
protected:
    PointerAway() { movePointer(640, 700); }
};

/// Agents at work on the open island, through the real hook script; each stage leaves a picture.
class SessionTest : public PointerAway
{
protected:
    void SetUp() override
    {
        ASSERT_TRUE(program.isReady());
        ASSERT_TRUE(waitForWidth(openWidth));
        ASSERT_TRUE(waitForWidth(compactWidth, 15000));
        QDir().mkpath(TIRLO_PICTURES);
    }

    /// Opens the island by a click, after which the pointer stays on it and keeps it open.
    static bool open()
    {
        clickAt(screenMiddle(), 10);
        return waitForWidth(openWidth);
    }

    /// Whether the light around the mascot of the overview comes to be of that kind.
    static bool waitForGlow(const std::function<bool(const QColor &)> &fits)
    {
        // Left of the card's text, the mascot's white in its middle.
        const QRect around(20, 60, 96, 84);
        constexpr int enough = 150;
        return waitUntil([&] { return countPixels(openWidth, around, fits) > enough; }, patience);
    }

    static bool isBlue(const QColor &c) { return c.blue() > c.red() + 12; }
    static bool isAmber(const QColor &c) { return c.red() > c.blue() + 12; }
    static bool isRed(const QColor &c) { return c.red() > c.green() + 25; }
    static bool isGreen(const QColor &c) { return c.green() > c.red() + 25; }

    /// Keeps a picture once the card has come to rest, or its text shimmers on and on.
    static void keepPicture(const char *stage)
    {
        constexpr int restMilliseconds = 250;
        constexpr int longestMotion = 1500;
        const QRect besideMascot(120, 0, 500, 160);
        QImage last;
        QElapsedTimer rest;
        waitUntil(
            [&] {
                const QImage now = takeIslandPicture(openWidth, besideMascot);
                if (now != last)
                    rest.start();
                last = now;
                return rest.elapsed() > restMilliseconds;
            },
            longestMotion);
        takePicture(QStringLiteral(TIRLO_PICTURES "/%1.png").arg(QLatin1String(stage)));
    }

    Program program{TIRLO_PROGRAM};
    Agent editor{program.hookScript(), "session-1", "/src/lighthouse"};
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

    const std::array<std::pair<const char *, QJsonObject>, 10> tools{{
        {"Grep", {{"query", "rotationPeriod"}}},
        {"Glob", {{"pattern", "*.c"}}},
        {"Read", {{"file_path", "/src/lighthouse/lamp.c"}}},
        {"Read", {{"file_path", "/src/lighthouse/motor.c"}}},
        {"Edit", {{"file_path", "/src/lighthouse/lamp.c"}}},
        {"Bash", {{"command", "make"}}},
        {"Write", {{"file_path", "/src/lighthouse/lamp_test.c"}}},
        {"Bash", {{"command", "make check"}}},
        {"Edit", {{"file_path", "/src/lighthouse/motor.c"}}},
        {"Read", {{"file_path", "/src/lighthouse/NEWS.md"}}},
    }};
    for (const auto &[tool, input] : tools)
        ASSERT_TRUE(editor.sendTool(tool, input)) << tool;
    EXPECT_TRUE(program.waitForText("11/11")) << "the prompt and ten tools";
    EXPECT_TRUE(program.waitForText("NEWS.md"));
    EXPECT_TRUE(waitForGlow(isBlue));
    keepPicture("session-3-tools");

    ASSERT_TRUE(editor.send("Notification", {{"message", "Which lamp do you mean?"}}));
    EXPECT_TRUE(program.waitForText("Which lamp do you mean?"));
    EXPECT_TRUE(program.waitForText("12/12"));
    keepPicture("session-4-question");

    ASSERT_TRUE(editor.send("Notification", {{"message", "You have hit your rate limit."}}));
    EXPECT_TRUE(waitForGlow(isAmber));
    EXPECT_TRUE(program.shows("12/12")) << "it is a mood and no step";
    keepPicture("session-5-rate-limit");

    const auto request = editor.askFor("Bash", {{"command", "make install"}});
    EXPECT_TRUE(program.waitForText("make install"));
    EXPECT_TRUE(program.waitForText("needs permission"));
    keepPicture("session-6-approval");
    ASSERT_TRUE(program.clickButton("Allow"));
    ASSERT_TRUE(request->waitForEnd());
    EXPECT_EQ(request->exitCode(), 0);
    EXPECT_EQ(request->output().toStdString(), allowAnswer);
    EXPECT_TRUE(program.waitForNoText("needs permission"));

    ASSERT_TRUE(editor.send("StopFailure"));
    EXPECT_TRUE(program.waitForText("Workflow stopped."));
    EXPECT_TRUE(waitUntil(
        [] { return countPixels(openWidth, QRect(200, 120, 240, 30), isRed) > 2000; }, patience));
    keepPicture("session-7-failure");

    ASSERT_TRUE(editor.send("Stop", {{"message", "The lamp is twice as fast."}}));
    EXPECT_TRUE(program.waitForText("Claude Code finished"));
    EXPECT_TRUE(program.waitForText("The lamp is twice as fast."));
    EXPECT_TRUE(waitUntil(
        [] { return countPixels(openWidth, QRect(200, 120, 240, 30), isGreen) > 2000; }, patience));
    keepPicture("session-8-stop");
    ASSERT_TRUE(program.clickButton("Dismiss"));
    EXPECT_TRUE(waitForWidth(compactWidth, patience));
}

TEST_F(SessionTest, TwoAgentsAtOnceAreKeptApart)
{
    const Agent codex(program.hookScript(), "session-2", "/src/harbour", "codex", "xterm");
    ASSERT_TRUE(open());
    std::vector<std::unique_ptr<HookRun>> runs;
    for (const Agent *agent : {&std::as_const(editor), &codex})
        runs.push_back(agent->start("SessionStart"));
    for (const auto &run : runs)
        ASSERT_TRUE(run->waitForEnd());
    runs.clear();
    for (int i = 0; i < 4; ++i) {
        for (const auto &[agent, path] :
             {std::pair(&std::as_const(editor), "/src/lighthouse/lamp.c"),
              std::pair(&codex, "/src/harbour/crane.c")})
            runs.push_back(
                agent->start("PreToolUse",
                             {{"tool_name", "Read"}, {"tool_input", QJsonObject{{"path", path}}}}));
    }
    for (const auto &run : runs)
        ASSERT_TRUE(run->waitForEnd(patience));

    EXPECT_TRUE(program.waitForText("lamp.c"));
    EXPECT_TRUE(program.waitForText("4/4"));
    EXPECT_FALSE(program.shows("crane.c")) << "the other's steps are its own";
    keepPicture("two-agents-1");
    ASSERT_TRUE(program.clickButton("harbour"));
    EXPECT_TRUE(program.waitForText("crane.c"));
    EXPECT_TRUE(program.waitForText("4/4"));
    EXPECT_TRUE(program.waitForNoText("lamp.c"));
    EXPECT_TRUE(program.button("VS Code"));
    keepPicture("two-agents-2");
}

TEST_F(SessionTest, FiveOthersHaveFourSmallMascots)
{
    ASSERT_TRUE(editor.send("SessionStart"));
    const std::array names{"anchor", "buoy", "crane", "dock", "eddy"};
    for (const char *name : names)
        ASSERT_TRUE(
            Agent(program.hookScript(), name, "/src/port", name, "xterm").send("SessionStart"));

    // At the compact island's right, two by two: each has colour, which the rest has not.
    const auto isColoured = [](const QColor &c) { return c.saturation() > 90 && c.value() > 90; };
    for (const QRect &cell : {QRect(186, 0, 14, 12), QRect(200, 0, 14, 12), QRect(186, 12, 14, 12),
                              QRect(200, 12, 14, 12)})
        EXPECT_TRUE(
            waitUntil([&] { return countPixels(compactWidth, cell, isColoured) > 10; }, patience))
            << cell.x() << "," << cell.y();
    keepPicture("five-others");
}

TEST_F(SessionTest, AlwaysAndDenyAnswerInTheAgentsWords)
{
    const auto always = editor.askFor("Bash", makeCall, suggestions);
    ASSERT_TRUE(program.clickButton("Always"));
    ASSERT_TRUE(always->waitForEnd());
    EXPECT_EQ(always->output().toStdString(), alwaysAnswer);

    const auto deny = editor.askFor("Bash", makeCall, suggestions);
    ASSERT_TRUE(program.clickButton("Deny"));
    ASSERT_TRUE(deny->waitForEnd());
    EXPECT_EQ(deny->exitCode(), 0);
    EXPECT_EQ(deny->output().toStdString(), denyAnswer);

    // In a terminal the agent asks by itself.
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
