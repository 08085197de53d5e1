#include "AfterGreeting.h"

#include <QJsonArray>

using namespace tirlo::e2e;

namespace {

/// Agents at work on the island, through the real hook script.
class SessionTest : public AfterGreeting
{
protected:
    /// What the agent reads once the request is answered by that button.
    QByteArray answerBy(const char *button, HookRun &request) const
    {
        if (!program.clickButton(button) || !request.waitForEnd() || request.exitCode() != 0)
            return "no answer";
        const QByteArray head
            = R"({"hookSpecificOutput":{"hookEventName":"PermissionRequest","decision":{)";
        const QByteArray output = request.output();
        return output.startsWith(head) ? output.mid(head.size()) : output;
    }

    const QJsonObject makeCall{{"command", "make release"}};
};

TEST_F(SessionTest, AWholeSessionIsSeenOnTheIsland)
{
    ASSERT_TRUE(open());
    ASSERT_TRUE(editor.send("SessionStart"));
    EXPECT_TRUE(program.waitForText("lighthouse"));
    EXPECT_TRUE(program.shows("Claude Code"));
    ASSERT_TRUE(editor.send("UserPromptSubmit", {{"prompt", "Turn the lamp faster"}}));
    EXPECT_TRUE(program.waitForText("Turn the lamp faster"));
    for (const char *file : {"lamp.c", "motor.c", "NEWS.md"})
        ASSERT_TRUE(editor.sendTool("Read", {{"file_path", file}})) << file;
    EXPECT_TRUE(program.waitForText("NEWS.md"));
    EXPECT_TRUE(program.waitForText("4/4")) << "the prompt and three tools";
    ASSERT_TRUE(editor.send("Notification", {{"message", "Which lamp do you mean?"}}));
    EXPECT_TRUE(program.waitForText("Which lamp do you mean?"));
    ASSERT_TRUE(editor.send("Notification", {{"message", "You have hit your rate limit."}}));
    EXPECT_TRUE(program.waitForText("5/5")) << "it is a mood and no step";

    const auto request = editor.askFor("Bash", {{"command", "make install"}});
    EXPECT_TRUE(program.waitForText("make install"));
    EXPECT_TRUE(program.waitForText("needs permission"));
    EXPECT_EQ(answerBy("Allow", *request), "\"behavior\":\"allow\"}}}\n");
    EXPECT_TRUE(program.waitForNoText("needs permission"));

    ASSERT_TRUE(editor.send("StopFailure"));
    EXPECT_TRUE(program.waitForText("Workflow stopped."));
    ASSERT_TRUE(editor.send("Stop", {{"message", "The lamp is twice as fast."}}));
    EXPECT_TRUE(program.waitForText("Claude Code finished"));
    EXPECT_TRUE(program.waitForText("The lamp is twice as fast."));
    ASSERT_TRUE(program.clickButton("Dismiss"));
    EXPECT_TRUE(waitForWidth(compactWidth, patience));
}

TEST_F(SessionTest, RequestsEndInTheAgentsWordsOrElsewhere)
{
    const QJsonObject rule{{"type", "addRules"}};
    for (const auto &[button, answer] :
         {std::pair("Always", R"("behavior":"allow","updatedPermissions":[{"type":"addRules"}])"),
          {"Deny", R"("behavior":"deny","message":"Denied from Tirlo")"}}) {
        const auto request
            = editor.askFor("Bash", makeCall, {{"permission_suggestions", QJsonArray{rule}}});
        EXPECT_EQ(answerBy(button, *request), QByteArray(answer) + "}}}\n");
    }

    // In a terminal the agent asks by itself, when the last card has gone.
    ASSERT_TRUE(program.waitForNoText("needs permission"));
    const Agent terminal{program.hookScript(), "session-3", "/src/x", "", "xterm"};
    const auto unseen = terminal.askFor("Bash", makeCall);
    ASSERT_TRUE(unseen->waitForEnd(3000));
    EXPECT_EQ(unseen->exitCode(), 0);
    EXPECT_EQ(unseen->output(), "");
    EXPECT_FALSE(program.button("Allow"));

    // One answered in the agent leaves a note, and closes.
    const auto request = editor.askFor("Bash", makeCall);
    ASSERT_TRUE(program.waitForButton("Allow"));
    request->kill();
    ASSERT_TRUE(program.waitForText("Handled in VS Code."));
    EXPECT_TRUE(program.waitForNoText("needs permission")) << "the card fades and is gone";
    EXPECT_FALSE(program.button("Allow"));
    EXPECT_TRUE(program.waitForNoText("Handled in VS Code."));
}

} // namespace
