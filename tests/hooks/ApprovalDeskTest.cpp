#include "hooks/ApprovalDesk.h"
#include "HookFixture.h"
#include "Peer.h"
#include "hooks/HookTasks.h"
#include "hooks/ThreadGroup.h"

namespace tirlo {
namespace {

constexpr auto request = R"({"session_id":"s","term_program":"vscode","cwd":"/w/P",
                             "tool_name":"Bash","tool_input":{"command":"ls","n":1},
                             "permission_suggestions":[{"type":"setMode","mode":"acceptEdits",
                                                        "destination":"session"}]})";
constexpr auto codexRequest = R"({"session_id":"c","tirlo_agent":"codex","cwd":"/w/P",
                                  "tool_name":"shell",
                                  "permission_suggestions":[{"type":"setMode",
                                      "mode":"acceptEdits","destination":"session"}]})";

struct ApprovalDeskTest : HookFixture
{
    /// Hands a request in; the result is the agent's side of its connection.
    Peer ask(const char *payload = request)
    {
        auto [peer, connection] = Peer::pair();
        desk.processPermissionRequest(std::move(connection), json(payload));
        return std::move(peer);
    }

    /// What the agent receives until its connection closes.
    QByteArray answerTo(Peer &peer)
    {
        writers.wait();
        queue.drain();
        return peer.receiveAll(0);
    }

    static QByteArray lineOf(const char *decision)
    {
        const QByteArray kept = decision == QByteArray("always") ? ",\"updatedPermissions\":[]" : "";
        return QByteArray("{\"permissionDecision\":\"") + decision + '"' + kept + "}\n";
    }

    bool isPending() const { return state.pendingApproval.value().has_value(); }

    ThreadGroup writers;
    HookTasks tasks{state, notifications};
    ApprovalDesk desk{context, tasks, writers};
};

TEST_F(ApprovalDeskTest, RequestGoesOnShow)
{
    const QJsonObject suggestion
        = json(R"({"type":"setMode","mode":"acceptEdits","destination":"session"})");
    const Peer peer = ask();
    EXPECT_EQ(state.pendingApproval.value(),
              (ApprovalInfo{
                  .id = 1,
                  .sessionId = u"s"_s,
                  .tool = u"Bash"_s,
                  .inputKey = QStringLiteral(R"({"command":"ls","n":1})"),
                  .pillId = u"integration_claude"_s,
                  .input = {{u"command"_s, u"ls"_s}, {u"n"_s, 1}},
                  .content = {.title = u"Run a command"_s,
                              .kind = RequestContent::Kind::command,
                              .text = u"ls"_s,
                              .more = u"n: 1"_s},
                  .grants = {{u"accept edits in this session"_s, suggestion}},
              }));
    EXPECT_TRUE(state.isPinned);
    EXPECT_EQ(task("integration_claude").state, BotState::approval);
    EXPECT_EQ(task("integration_claude").name, u"P"_s);
    EXPECT_EQ(tasks.activeSessionId, u"s"_s);
    EXPECT_EQ(sounds.played, QStringList(u"approval"_s));
    EXPECT_EQ(expanded, QList<IslandView>{IslandView::approval});
    EXPECT_EQ(logLines(), QStringList(u"PermissionRequest Bash [integration_claude]"_s));
    EXPECT_FALSE(peer.isReadable());

    const Peer odd = ask(R"({"term_program":"vscode","tool_name":{},"tool_input":"ls"})");
    EXPECT_EQ(state.pendingApproval.value(),
              (ApprovalInfo{.id = 2,
                            .sessionId = u"unknown"_s,
                            .tool = u"Tool"_s,
                            .inputKey = {},
                            .pillId = u"integration_claude"_s,
                            .content = {.title = u"Tool"_s, .text = u"tool_input: ls"_s}}));
}

TEST_F(ApprovalDeskTest, RequestsOfOthersAreHandedBack)
{
    for (const char *other :
         {R"({"tirlo_agent":"gemini","term_program":"vscode"})", R"({"term_program":"xterm"})",
          R"({"tirlo_agent":1,"term_program":["vscode"],"tool_input":[]})"}) {
        Peer peer = ask(other);
        EXPECT_EQ(answerTo(peer), lineOf("ask"));
    }
    EXPECT_FALSE(isPending());
    EXPECT_TRUE(sounds.played.isEmpty());
}

TEST_F(ApprovalDeskTest, DecisionReachesTheAgentAndClosesTheCard)
{
    for (const QByteArray word : {"allow", "always", "ask", "deny"}) {
        island.setView(IslandView::approval);
        Peer peer = ask();
        desk.sendApprovalDecision({*fromRawText<Decision>(QString::fromLatin1(word))});
        EXPECT_EQ(answerTo(peer), lineOf(word));
        EXPECT_FALSE(isPending());
        EXPECT_FALSE(state.isPinned);
        EXPECT_EQ(task("integration_claude").state, BotState::working);
        EXPECT_EQ(state.view.value(), IslandView::overview);
    }
    ask().close();
    desk.sendApprovalDecision({Decision::deny});
    writers.wait();
    QCoreApplication::processEvents();
    queue.advance(120);
    EXPECT_EQ(state.noteMessage.value(), std::nullopt);
    EXPECT_EQ(collapses, 0);

    // One without a request resets the card all the same.
    island.setView(IslandView::approval);
    state.tasks = QList<AgentTask>();
    state.isPinned = true;
    desk.sendApprovalDecision({Decision::allow});
    EXPECT_FALSE(state.isPinned);
    EXPECT_EQ(state.view.value(), IslandView::empty);
}

TEST_F(ApprovalDeskTest, RequestThatEndsUnansweredLeavesANoteForAMoment)
{
    // An agent that hangs up was answered elsewhere.
    ask(R"({"bundle_id":"com.todesktop.230313mzl4w4u92"})").close();
    ASSERT_TRUE(eventually([&] { return !isPending(); }));
    EXPECT_EQ(state.noteMessage.value(), u"Handled in Cursor."_s);
    EXPECT_EQ(state.view.value(), IslandView::note);
    EXPECT_FALSE(state.isPinned);
    queue.advance(2.9);
    EXPECT_EQ(collapses, 0);
    queue.advance(0.2);
    EXPECT_EQ(collapses, 1);

    // The card runs out before the relay does.
    Peer peer = ask(codexRequest);
    EXPECT_TRUE(state.pendingApproval.value()->grants.isEmpty()) << "Codex keeps nothing";
    queue.advance(114.9);
    EXPECT_TRUE(isPending());
    queue.advance(0.2);
    EXPECT_EQ(state.noteMessage.value(), u"Still waiting in Codex."_s);
    EXPECT_EQ(answerTo(peer), "");
}

TEST_F(ApprovalDeskTest, SupersededRequestFallsBackToAsk)
{
    tasks.upsertExternalAgent(u"agent_foo"_s, u"foo"_s);
    state.focusId = u"agent_foo"_s;
    Peer first = ask();
    queue.advance(60);
    Peer second = ask(codexRequest);
    EXPECT_EQ(state.pendingApproval.value()->pillId, u"agent_codex"_s);
    EXPECT_EQ(task("integration_claude").state, BotState::approval);
    EXPECT_EQ(answerTo(first), lineOf("ask"));

    // Neither the first one's limit nor its end touches the second.
    first.close();
    QCoreApplication::processEvents();
    queue.advance(60);
    EXPECT_TRUE(isPending());
    EXPECT_FALSE(second.isReadable());

    desk.sendApprovalDecision({Decision::allow});
    EXPECT_EQ(answerTo(second), lineOf("allow"));
    EXPECT_EQ(state.focusId.value(), u"agent_foo"_s);
}

TEST_F(ApprovalDeskTest, FocusGoesBackUnlessItMovedOrItsTaskIsGone)
{
    const QString foo = u"agent_foo"_s;
    const QString codex = u"agent_codex"_s;
    const QString claude = u"integration_claude"_s;
    const auto focusAfter = [&](const std::optional<QString> &before, auto meanwhile) {
        tasks.upsertExternalAgent(foo, u"foo"_s);
        state.focusId = before;
        const Peer peer = ask(codexRequest);
        EXPECT_EQ(state.focusId.value(), codex);
        meanwhile();
        desk.sendApprovalDecision({Decision::deny});
        return state.focusId.value();
    };
    EXPECT_EQ(focusAfter(foo, [&] { state.focusId = claude; }), claude);
    EXPECT_EQ(focusAfter(foo, [&] { state.removeTask(foo); }), codex);
    EXPECT_EQ(focusAfter(std::nullopt, [] {}), codex);
}

TEST_F(ApprovalDeskTest, OnlyWhatShowsAnAnswerMovesAWaitingPill)
{
    const HookRoute claude{u"integration_claude"_s, {}};
    const HookRoute other{u"agent_codex"_s, {}};
    const auto settles = [&](const char *event, const char *payload, const char *session) {
        SCOPED_TRACE(event);
        const Peer peer = ask();
        state.noteMessage = std::nullopt;
        HookOrigin origin;
        origin.sessionId = QLatin1String(session);
        EXPECT_TRUE(desk.admits(QLatin1String(event), other, origin, json(payload)));
        const bool isSettled = desk.admits(QLatin1String(event), claude, origin, json(payload));
        EXPECT_EQ(isPending(), !isSettled);
        EXPECT_EQ(state.noteMessage.value() == u"Handled in VS Code."_s, isSettled);
        EXPECT_EQ(peer.isReadable(), isSettled);
        return isSettled;
    };
    for (const char *event :
         {"Stop", "StopFailure", "UserPromptSubmit", "SessionEnd", "Interrupt"}) {
        EXPECT_TRUE(settles(event, "{}", "s"));
        EXPECT_FALSE(settles(event, "{}", "other"));
    }
    constexpr auto sameCall = R"({"tool_name":"Bash","tool_input":{"n":1,"command":"ls"}})";
    for (const char *event : {"PostToolUse", "PostToolUseFailure"}) {
        EXPECT_TRUE(settles(event, sameCall, "s"));
        EXPECT_FALSE(settles(event, sameCall, "other"));
        for (const char *otherCall : {R"({"tool_name":"Bash","tool_input":{"command":"ls"}})",
                                      R"({"tool_name":"Bash","tool_input":"ls"})"})
            EXPECT_FALSE(settles(event, otherCall, "s"));
    }
    EXPECT_FALSE(settles("PreToolUse", sameCall, "s"));
    desk.sendApprovalDecision({Decision::deny});
    EXPECT_TRUE(desk.admits(u"PreToolUse"_s, claude, {}, {}));
}

} // namespace
} // namespace tirlo
