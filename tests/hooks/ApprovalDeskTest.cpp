#include "hooks/ApprovalDesk.h"
#include "HookFixture.h"
#include "Peer.h"
#include "hooks/HookTasks.h"
#include "hooks/SessionBook.h"
#include "platform/ThreadGroup.h"

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
    Peer ask(const QByteArray &payload = request)
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
        const QByteArray kept
            = decision == QByteArray("always") ? ",\"updatedPermissions\":[]" : "";
        return QByteArray("{\"permissionDecision\":\"") + decision + '"' + kept + "}\n";
    }

    bool isPending() const { return state.pendingApproval.value().has_value(); }

    ThreadGroup writers;
    HookTasks tasks{state, notifications};
    SessionBook sessions{state, queue, processes};
    ApprovalDesk desk{context, tasks, sessions, writers};
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
                  .folder = u"P"_s,
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
                            .folder = u"Session"_s,
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
        const bool asksInTerminal = word == "ask";
        EXPECT_EQ(answerTo(peer), lineOf(word));
        EXPECT_FALSE(isPending());
        EXPECT_FALSE(state.isPinned);
        EXPECT_EQ(task("integration_claude").state,
                  asksInTerminal ? BotState::approval : BotState::working);
        EXPECT_EQ(state.view.value(), IslandView::overview);
        sessions.end({u"integration_claude"_s, u"s"_s});
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
    EXPECT_TRUE(task("agent_codex").sessions.first().waitsInTerminal);

    // A fresh card is not taken away by the end of a note before it.
    const Peer fresh = ask(codexRequest);
    island.setView(IslandView::approval);
    queue.advance(5);
    EXPECT_EQ(collapses, 1);
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
    EXPECT_EQ(task("integration_claude").steps.last(), SessionBook::waitingStep);
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

TEST_F(ApprovalDeskTest, OnlyWhatShowsAnAnswerMovesAWaitingSession)
{
    const HookRoute claude{u"integration_claude"_s, {}, u"VS Code"_s};
    const HookRoute other{u"agent_codex"_s, {}, u"Codex"_s};
    const auto settles = [&](const char *event, const char *payload, const char *session) {
        SCOPED_TRACE(event);
        const Peer peer = ask();
        state.noteMessage = std::nullopt;
        HookOrigin origin;
        origin.sessionId = QLatin1String(session);
        EXPECT_TRUE(desk.admits(QLatin1String(event), other, origin, json(payload)));
        const bool isAdmitted = desk.admits(QLatin1String(event), claude, origin, json(payload));
        const bool isSettled = !isPending();
        // Another session of the pill goes its own way.
        EXPECT_EQ(isAdmitted, isSettled || origin.sessionId == u"other"_s);
        EXPECT_EQ(state.noteMessage.value() == u"Handled in VS Code."_s, isSettled);
        EXPECT_EQ(peer.isReadable(), isSettled);
        return isSettled;
    };
    for (const char *event :
         {"Stop", "StopFailure", "UserPromptSubmit", "SessionEnd", "Interrupt"}) {
        EXPECT_TRUE(settles(event, "{}", "s"));
        EXPECT_FALSE(settles(event, "{}", "other"));
    }
    for (const char *event : {"StopFailure", "SubagentStop"})
        EXPECT_FALSE(settles(event, R"({"agent_id":"a1"})", "s")) << "it is a subagent's end";
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

TEST_F(ApprovalDeskTest, ACallIsKnownAgainAtItsEnd)
{
    // As agents tell of them: what was added for the user, what the user has added, who asked.
    const struct
    {
        const char *asked;
        const char *ended;
        bool isSame;
    } rows[] = {
        {R"("tool_name":"Bash","tool_input":{"command":"touch a","description":"must write"})",
         R"("tool_name":"Bash","tool_input":{"command":"touch a"})", true},
        {R"("tool_name":"AskUserQuestion","tool_input":{"questions":[{"question":"Q?"}]})",
         R"("tool_name":"AskUserQuestion",
            "tool_input":{"questions":[{"question":"Q?"}],"answers":{"Q?":"A"}})",
         true},
        {R"("agent_id":"a1","tool_name":"Bash","tool_input":{"command":"ls"})",
         R"("agent_id":"a1","tool_name":"Bash","tool_input":{"command":"ls"})", true},
        {R"("agent_id":"a1","tool_name":"Bash","tool_input":{"command":"ls"})",
         R"("tool_name":"Bash","tool_input":{"command":"ls"})", false},
    };
    const HookRoute claude{u"integration_claude"_s, {}, u"VS Code"_s};
    HookOrigin origin;
    origin.sessionId = u"s"_s;
    for (const auto &row : rows) {
        const QByteArray head = R"({"session_id":"s","term_program":"vscode",)";
        for (const bool inTerminal : {false, true}) {
            const Peer peer = ask(head + row.asked + '}');
            if (inTerminal)
                desk.sendApprovalDecision({Decision::ask});
            EXPECT_EQ(desk.admits(u"PostToolUse"_s, claude, origin, json(head + row.ended + '}')),
                      row.isSame)
                << row.ended;
            sessions.end({claude.pillId, origin.sessionId});
            state.pendingApproval = std::nullopt;
        }
    }
    // The end of the session's turn leaves what its subagent asks.
    const Peer peer = ask(R"({"session_id":"s","term_program":"vscode","agent_id":"a1"})");
    EXPECT_FALSE(desk.admits(u"Stop"_s, claude, origin, {}));
    EXPECT_TRUE(desk.admits(u"SubagentStop"_s, claude, origin, json(R"({"agent_id":"a1"})")));
}

TEST_F(ApprovalDeskTest, ASessionWaitsInItsTerminalUntilItMovesOn)
{
    const HookRoute claude{u"integration_claude"_s, {}, u"VS Code"_s};
    HookOrigin origin;
    origin.sessionId = u"s"_s;
    constexpr auto sameCall = R"({"tool_name":"Bash","tool_input":{"command":"ls","n":1}})";
    const struct
    {
        const char *event;
        const char *payload;
        bool movesOn;
    } rows[] = {
        {"Notification", R"({"message":"Claude needs your permission"})", false},
        {"Notification", R"({"notification_type":"idle_prompt"})", true},
        {"PostToolUse", R"({"tool_name":"Bash","tool_input":{"command":"pwd"}})", false},
        {"PreToolUse", R"({"tool_name":"Read","agent_id":"a1"})", false},
        {"PostToolUse", sameCall, true},
        {"PreToolUse", R"({"tool_name":"Read"})", true},
        {"UserPromptSubmit", "{}", true},
        {"Stop", "{}", true},
    };
    for (const auto &row : rows) {
        SCOPED_TRACE(row.event);
        const Peer peer = ask();
        queue.advance(116);
        const auto waits
            = [&] { return task("integration_claude").sessions.first().waitsInTerminal; };
        ASSERT_TRUE(waits());
        EXPECT_EQ(desk.admits(QLatin1String(row.event), claude, origin, json(row.payload)),
                  row.movesOn);
        EXPECT_EQ(waits(), !row.movesOn);
        sessions.end({claude.pillId, origin.sessionId});
    }

    // Of two calls of one session that wait, an answer to the newer leaves the older.
    const Peer older = ask();
    const Peer newer = ask(R"({"session_id":"s","term_program":"vscode","tool_name":"Read"})");
    desk.sendApprovalDecision({Decision::allow});
    EXPECT_TRUE(task("integration_claude").sessions.first().waitsInTerminal);
}

} // namespace
} // namespace tirlo
