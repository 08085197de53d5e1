#include "kit/AccessibleTree.h"
#include "kit/Agent.h"
#include "kit/Desktop.h"
#include "kit/Program.h"

#include <QJsonArray>

#include <gtest/gtest.h>

#include <string>

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

const QJsonObject makeCall{{"command", "make release"}};
const QJsonObject suggestions{
    {"permission_suggestions",
     QJsonArray{QJsonObject{
         {"type", "addRules"},
         {"rules", QJsonArray{QJsonObject{{"toolName", "Bash"}, {"ruleContent", "make:*"}}}}}}}};

/// The real program on the virtual desktop, with an agent that works in the editor.
class PermissionTest : public testing::Test
{
protected:
    void SetUp() override
    {
        ASSERT_TRUE(program.isReady());
        movePointer(640, 700);
    }

    bool shows(const char *text) const { return showsText(program.processId(), text); }

    bool waitFor(const char *text) const
    {
        return waitUntil([&] { return shows(text); });
    }

    bool waitForNo(const char *text) const
    {
        return waitUntil([&] { return !shows(text); });
    }

    bool waitForButton(const char *name) const
    {
        return waitUntil(
            [&] { return findNode(program.processId(), "push button", name).has_value(); });
    }

    /// Clicks the middle of the button, as a hand would once the island has opened; false when it
    /// isn't there.
    bool click(const char *name) const
    {
        constexpr int openingTime = 700;
        if (!waitForButton(name))
            return false;
        waitUntil([] { return false; }, openingTime);
        const auto button = *findNode(program.processId(), "push button", name);
        clickAt(button.x + button.width / 2, button.y + button.height / 2);
        return true;
    }

    Program program{TIRLO_PROGRAM};
    Agent editor{program.hookScript(), "session-1", "/src/lighthouse"};
    Agent codex{program.hookScript(), "session-2", "/src/harbour", "codex", "xterm"};
};

TEST_F(PermissionTest, AllowLetsTheAgentGoOn)
{
    ASSERT_TRUE(editor.send("SessionStart"));
    ASSERT_TRUE(editor.send("UserPromptSubmit", {{"prompt", "Build it"}}));
    ASSERT_TRUE(editor.sendTool("Read", {{"file_path", "/src/lighthouse/main.c"}}));

    const auto request = editor.askFor("Bash", makeCall);
    ASSERT_TRUE(waitFor("make release"));
    EXPECT_TRUE(shows("lighthouse"));
    EXPECT_TRUE(shows("needs permission"));
    EXPECT_TRUE(request->isRunning());
    ASSERT_TRUE(click("Allow"));
    ASSERT_TRUE(request->waitForEnd());
    EXPECT_EQ(request->exitCode(), 0);
    EXPECT_EQ(request->output().toStdString(), allowAnswer);

    // Back on the overview, which shows the step before the request.
    EXPECT_TRUE(waitFor("Lit · main.c"));
    EXPECT_TRUE(waitForNo("needs permission"));
    EXPECT_TRUE(program.log().contains("SessionStart lighthouse (session-)"));
    EXPECT_TRUE(program.log().contains("PermissionRequest Bash [integration_claude]"));
}

TEST_F(PermissionTest, AlwaysAndDenyAnswerInTheAgentsWords)
{
    const auto always = editor.askFor("Bash", makeCall, suggestions);
    ASSERT_TRUE(click("Always"));
    ASSERT_TRUE(always->waitForEnd());
    EXPECT_EQ(always->output().toStdString(), alwaysAnswer);

    const auto deny = editor.askFor("Bash", makeCall, suggestions);
    ASSERT_TRUE(click("Deny"));
    ASSERT_TRUE(deny->waitForEnd());
    EXPECT_EQ(deny->exitCode(), 0);
    EXPECT_EQ(deny->output().toStdString(), denyAnswer);
}

TEST_F(PermissionTest, CodexIsOfferedNoStandingApproval)
{
    const auto request = codex.askFor("apply_patch", makeCall);
    ASSERT_TRUE(waitForButton("Allow"));
    EXPECT_TRUE(findNode(program.processId(), "push button", "Deny"));
    EXPECT_FALSE(findNode(program.processId(), "push button", "Always"));
    ASSERT_TRUE(click("Allow"));
    ASSERT_TRUE(request->waitForEnd());
    EXPECT_EQ(request->output().toStdString(), allowAnswer);
}

TEST_F(PermissionTest, ARequestAnsweredElsewhereLeavesANoteAndCloses)
{
    const auto request = editor.askFor("Bash", makeCall);
    ASSERT_TRUE(waitForButton("Allow"));
    request->kill();
    ASSERT_TRUE(waitFor("Handled in VS Code."));
    EXPECT_TRUE(waitForNo("needs permission")) << "the card fades and is gone";
    EXPECT_FALSE(findNode(program.processId(), "push button", "Allow"));
    EXPECT_TRUE(waitUntil([&] { return !shows("Handled in VS Code."); }, 6000));
}

TEST_F(PermissionTest, ANewerRequestSendsTheOlderOneBackToItsAgent)
{
    const auto older = editor.askFor("Bash", makeCall);
    ASSERT_TRUE(waitFor("make release"));
    const auto newer = codex.askFor("Bash", {{"command", "ls -la"}});
    ASSERT_TRUE(waitFor("ls -la"));
    ASSERT_TRUE(older->waitForEnd());
    EXPECT_EQ(older->exitCode(), 0);
    EXPECT_EQ(older->output().toStdString(), "");

    EXPECT_TRUE(newer->isRunning());
    ASSERT_TRUE(click("Deny"));
    ASSERT_TRUE(newer->waitForEnd());
    EXPECT_EQ(newer->output().toStdString(), denyAnswer);
}

TEST_F(PermissionTest, AgentsThatTheIslandDoesNotAnswerForAskThemselves)
{
    const Agent terminal(program.hookScript(), "session-3", "/src/x", "", "xterm");
    const Agent gemini(program.hookScript(), "session-4", "/src/x", "gemini");
    for (const Agent *agent : {&terminal, &gemini}) {
        const auto request = agent->askFor("Bash", makeCall);
        ASSERT_TRUE(request->waitForEnd(3000));
        EXPECT_EQ(request->exitCode(), 0);
        EXPECT_EQ(request->output().toStdString(), "");
    }
    EXPECT_FALSE(findNode(program.processId(), "push button", "Allow"));
}

} // namespace
