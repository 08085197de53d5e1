#include "AfterGreeting.h"

#include <QElapsedTimer>
#include <QJsonArray>

using namespace tirlo::e2e;

namespace {

/// Agents at work on the island, through the real hook script.
class SessionTest : public AfterGreeting
{
protected:
    /// What the agent reads once the request is answered by that button.
    QByteArray answerBy(const char *button, HookRun &request,
                        const char *role = "push button") const
    {
        if (!program.clickButton(button, role) || !request.waitForEnd() || request.exitCode() != 0)
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

    const QString script = QString("cp -r module /tmp/backup\n").repeated(7);
    const auto request
        = editor.askFor("Bash", {{"command", script + "rm -rf ~/Documents\n" + script}});
    EXPECT_TRUE(program.waitForText("rm -rf ~/Documents")) << "nothing is cut from its middle";
    EXPECT_TRUE(program.waitForText("needs permission"));
    EXPECT_EQ(answerBy("Allow", *request), "\"behavior\":\"allow\"}}}\n");
    EXPECT_TRUE(program.waitForNoText("needs permission"));

    ASSERT_TRUE(editor.send("StopFailure", {{"last_assistant_message", "API Error: 400"}}));
    EXPECT_TRUE(program.waitForText("Claude Code stopped"));
    EXPECT_TRUE(program.shows("API Error: 400"));
    ASSERT_TRUE(
        editor.send("Stop", {{"last_assistant_message", "The **lamp** is twice as fast."}}));
    EXPECT_TRUE(program.waitForText("Claude Code finished"));
    EXPECT_TRUE(program.waitForText("The lamp is twice as fast."));
    ASSERT_TRUE(program.clickButton("Dismiss"));
    EXPECT_TRUE(waitForWidth(compactWidth, patience));
}

TEST_F(SessionTest, AQuestionIsAnsweredAndADenialSaysWhy)
{
    const QJsonObject question{
        {"question", "Which database?"},
        {"options",
         QJsonArray{QJsonObject{{"label", "SQLite"}}, QJsonObject{{"label", "Postgres"}}}}};
    const QJsonObject input{{"questions", QJsonArray{question}}};
    const auto asked = editor.askFor("AskUserQuestion", input);
    ASSERT_TRUE(program.waitForText("Which database?"));
    const QByteArray answer = answerBy("Postgres", *asked, "radio button");
    EXPECT_TRUE(answer.contains(R"("answers":{"Which database?":"Postgres"})")) << answer.data();

    // Clicks where the button will be decide nothing until the card has been seen.
    const auto learnt = editor.askFor("Bash", makeCall);
    ASSERT_TRUE(program.waitForButton("Allow"));
    rest(1500);
    const QPoint allow = program.button("Allow")->place.center();
    clickAt(allow.x(), allow.y());
    ASSERT_TRUE(learnt->waitForEnd());
    QProcess::execute("xdotool", {"key", "Escape"});
    ASSERT_TRUE(waitForWidth(compactWidth));
    const auto request = editor.askFor("Bash", makeCall);
    QElapsedTimer passed;
    for (passed.start(); passed.elapsed() < 400; rest(30))
        QProcess::execute("xdotool", {"click", "1"});
    ASSERT_TRUE(program.waitForButton("Allow"));
    rest(1000);
    EXPECT_TRUE(request->isRunning());

    const auto why = program.button("Say why…", "text");
    ASSERT_TRUE(why);
    clickAt(why->place.center().x(), why->place.center().y());
    rest(300);
    QProcess::execute("xdotool", {"type", "--delay", "20", "Use the other file"});
    QProcess::execute("xdotool", {"key", "Return"});
    ASSERT_TRUE(request->waitForEnd());
    EXPECT_TRUE(request->output().contains(R"("behavior":"deny","message":"Use the other file")"))
        << request->output().data();
}

TEST_F(SessionTest, RequestsEndInTheAgentsWordsOrElsewhere)
{
    const QJsonObject rule{
        {"type", "addRules"},
        {"behavior", "allow"},
        {"destination", "session"},
        {"rules", QJsonArray{QJsonObject{{"toolName", "Bash"}, {"ruleContent", "make:*"}}}}};
    for (
        const auto &[button, answer] :
        {std::pair(
             "Always",
             R"("behavior":"allow","updatedPermissions":[{"behavior":"allow","destination":"session",)"
             R"("rules":[{"ruleContent":"make:*","toolName":"Bash"}],)"
             R"("type":"addRules"}])"),
         {"Deny", R"("behavior":"deny","message":"Denied from Tirlo")"}}) {
        const auto request
            = editor.askFor("Bash", makeCall, {{"permission_suggestions", QJsonArray{rule}}});
        EXPECT_TRUE(program.waitForText("Bash(make:*) in this session"));
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

TEST_F(SessionTest, OfTwoSessionsEachEndsForItself)
{
    ASSERT_TRUE(open());
    QFile transcript(program.home() + "/session.jsonl");
    ASSERT_TRUE(transcript.open(QIODevice::WriteOnly));
    ASSERT_TRUE(editor.send(
        "UserPromptSubmit",
        {{"prompt", "Turn the lamp faster"}, {"transcript_path", transcript.fileName()}}));
    const Agent other{program.hookScript(), "session-2", "/src/buoy"};
    ASSERT_TRUE(other.sendTool("Read", {{"file_path", "bell.c"}}));
    ASSERT_TRUE(program.clickButton("2 sessions", "check box"));
    EXPECT_TRUE(program.waitForText("buoy"));
    EXPECT_FALSE(program.shows("at rest"));

    // An interrupted turn tells nobody but its transcript.
    transcript.write(R"({"type":"user","message":{"content":[{"type":"text",)"
                     R"("text":"[Request interrupted by user]"}]}})"
                     "\n");
    transcript.close();
    EXPECT_TRUE(program.waitForText("at rest"));

    ASSERT_TRUE(other.send("SessionEnd", {{"reason", "other"}}));
    EXPECT_TRUE(program.waitForNoText("buoy"));
    EXPECT_TRUE(program.shows("lighthouse"));
}

TEST_F(SessionTest, AKilledAgentsPillGoes)
{
    ASSERT_TRUE(open());
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert("HOME", program.hookScript().section("/Library/", 0, 0));
    QProcess agent;
    agent.setProcessEnvironment(environment);
    agent.start("python3",
                {"-c", R"(
import subprocess, sys, time
for event in "SessionStart", "UserPromptSubmit":
    hook = '{"hook_event_name":"%s","session_id":"k","cwd":"/src/beacon"}' % event
    subprocess.run(["sh", "-c", "'%s' --agent codex" % sys.argv[1]], input=hook.encode())
time.sleep(600)
)",
                 program.hookScript()});
    ASSERT_TRUE(program.waitForText("beacon"));
    EXPECT_FALSE(agent.waitForFinished(1000));
    EXPECT_TRUE(program.shows("beacon"));
    agent.kill();
    EXPECT_TRUE(program.waitForNoText("beacon"));
    agent.waitForFinished();
}

} // namespace
