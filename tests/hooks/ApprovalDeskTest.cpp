#include "hooks/ApprovalDesk.h"
#include "HookFixture.h"
#include "Peer.h"
#include "hooks/HookTasks.h"

#include <QThreadPool>

namespace tirlo {
namespace {

constexpr auto request = R"({"session_id":"s","term_program":"vscode","cwd":"/w/P",
                             "tool_name":"Bash","tool_input":{"command":"ls","n":1}})";
constexpr auto codexRequest = R"({"session_id":"c","tirlo_agent":"codex","cwd":"/w/P",
                                  "tool_name":"shell"})";

struct ApprovalDeskTest : HookFixture
{
    ~ApprovalDeskTest() override { writers.waitForDone(); }

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
        writers.waitForDone();
        queue.drain();
        return peer.receiveAll(0);
    }

    bool isPending() const { return state.pendingApproval.value().has_value(); }

    QThreadPool writers;
    HookTasks tasks{state, notifications};
    ApprovalDesk desk{context, tasks, writers};
};

TEST_F(ApprovalDeskTest, RequestGoesOnShow)
{
    state.mode = IslandMode::compact;
    const Peer peer = ask();
    EXPECT_EQ(state.pendingApproval.value(),
              (ApprovalInfo{QStringLiteral("s"), QStringLiteral("Bash"), QStringLiteral("ls"),
                            QStringLiteral(R"({"command":"ls","n":1})"),
                            QStringLiteral("integration_claude")}));
    EXPECT_TRUE(state.isPinned);
    EXPECT_EQ(task("integration_claude").state, BotState::approval);
    EXPECT_EQ(task("integration_claude").name, QStringLiteral("P"));
    EXPECT_EQ(tasks.activeSessionId, QStringLiteral("s"));
    EXPECT_EQ(sound.played, QStringList(QStringLiteral("approval")));
    EXPECT_EQ(expanded, QList<IslandView>{IslandView::approval});
    EXPECT_EQ(logLines(),
              QStringList(QStringLiteral("PermissionRequest Bash [integration_claude]")));
    EXPECT_FALSE(peer.isReadable());
}

TEST_F(ApprovalDeskTest, RequestsOfOthersAreHandedBack)
{
    for (const char *other :
         {R"({"tirlo_agent":"gemini","term_program":"vscode"})", R"({"term_program":"xterm"})",
          R"({"tirlo_agent":1,"term_program":["vscode"],"tool_input":[]})"}) {
        Peer peer = ask(other);
        EXPECT_EQ(answerTo(peer), "{\"permissionDecision\":\"ask\"}\n");
    }
    EXPECT_FALSE(isPending());
    EXPECT_TRUE(sound.played.isEmpty());
}

TEST_F(ApprovalDeskTest, ToolsOfAWrongTypeGetTheirDefaults)
{
    const Peer peer = ask(R"({"term_program":"vscode","tool_name":{},"tool_input":"ls"})");
    EXPECT_EQ(state.pendingApproval.value()->tool, QStringLiteral("Tool"));
    EXPECT_EQ(state.pendingApproval.value()->command, QStringLiteral("Tool"));
    EXPECT_EQ(state.pendingApproval.value()->inputKey, QString());
    EXPECT_EQ(state.pendingApproval.value()->sessionId, QStringLiteral("unknown"));
}

TEST_F(ApprovalDeskTest, DecisionReachesTheAgentAndClosesTheCard)
{
    const struct
    {
        const char *decision;
        const char *line;
    } rows[] = {
        {"allow", "{\"permissionDecision\":\"allow\"}\n"},
        {"always", "{\"permissionDecision\":\"always\"}\n"},
        {"ask", "{\"permissionDecision\":\"ask\"}\n"},
        {"deny", "{\"permissionDecision\":\"deny\"}\n"},
        {"Allow", "{\"permissionDecision\":\"deny\"}\n"},
    };
    for (const auto &row : rows) {
        state.view = IslandView::approval;
        Peer peer = ask();
        desk.sendApprovalDecision(QLatin1String(row.decision));
        EXPECT_EQ(answerTo(peer), row.line);
        EXPECT_FALSE(isPending());
        EXPECT_FALSE(state.isPinned);
        EXPECT_EQ(task("integration_claude").state, BotState::working);
        EXPECT_EQ(state.view.value(), IslandView::overview);
    }
    queue.advance(120);
    QCoreApplication::processEvents();
    EXPECT_EQ(state.noteMessage.value(), std::nullopt);
    EXPECT_EQ(collapses, 0);

    // One without a request resets the card all the same.
    state.tasks = QList<AgentTask>();
    state.isPinned = true;
    desk.sendApprovalDecision(QStringLiteral("allow"));
    EXPECT_FALSE(state.isPinned);
    EXPECT_EQ(state.view.value(), IslandView::empty);
}

TEST_F(ApprovalDeskTest, AgentThatHangsUpWasAnsweredElsewhere)
{
    Peer peer = ask(R"({"bundle_id":"com.todesktop.230313mzl4w4u92"})");
    peer.close();
    ASSERT_TRUE(eventually([&] { return !isPending(); }));
    EXPECT_EQ(state.noteMessage.value(), QStringLiteral("Handled in Cursor."));
    EXPECT_EQ(state.view.value(), IslandView::note);
    EXPECT_FALSE(state.isPinned);

    queue.advance(2.9);
    EXPECT_EQ(collapses, 0);
    queue.advance(0.2);
    EXPECT_EQ(collapses, 1);
}

TEST_F(ApprovalDeskTest, CardRunsOutBeforeTheRelayDoes)
{
    Peer peer = ask(codexRequest);
    queue.advance(114.9);
    EXPECT_TRUE(isPending());
    queue.advance(0.2);
    EXPECT_FALSE(isPending());
    EXPECT_EQ(state.noteMessage.value(), QStringLiteral("Still waiting in Codex."));
    EXPECT_EQ(answerTo(peer), "");
}

TEST_F(ApprovalDeskTest, SupersededRequestFallsBackToAsk)
{
    tasks.upsertExternalAgent(QStringLiteral("agent_foo"), QStringLiteral("foo"));
    state.focusId = QStringLiteral("agent_foo");
    Peer first = ask();
    queue.advance(60);
    Peer second = ask(codexRequest);
    EXPECT_EQ(state.pendingApproval.value()->pillId, QStringLiteral("agent_codex"));
    EXPECT_EQ(task("integration_claude").state, BotState::approval);
    EXPECT_EQ(answerTo(first), "{\"permissionDecision\":\"ask\"}\n");

    // Neither the first one's limit nor its end touches the second.
    first.close();
    QCoreApplication::processEvents();
    queue.advance(60);
    EXPECT_TRUE(isPending());
    EXPECT_FALSE(second.isReadable());

    desk.sendApprovalDecision(QStringLiteral("allow"));
    EXPECT_EQ(answerTo(second), "{\"permissionDecision\":\"allow\"}\n");
    EXPECT_EQ(state.focusId.value(), QStringLiteral("agent_foo"));
}

TEST_F(ApprovalDeskTest, FocusGoesBackUnlessItMovedOrItsTaskIsGone)
{
    const QString foo = QStringLiteral("agent_foo");
    const QString codex = QStringLiteral("agent_codex");
    const QString claude = QStringLiteral("integration_claude");
    const struct
    {
        std::optional<QString> before;
        std::function<void()> meanwhile;
        std::optional<QString> after;
    } rows[] = {
        {foo, [] {}, foo},
        {foo, [&] { state.focusId = claude; }, claude},
        {foo, [&] { state.removeTask(foo); }, codex},
        {std::nullopt, [] {}, codex},
    };
    for (const auto &row : rows) {
        tasks.upsertExternalAgent(foo, QStringLiteral("foo"));
        state.focusId = row.before;
        const Peer peer = ask(codexRequest);
        EXPECT_EQ(state.focusId.value(), codex);
        row.meanwhile();
        desk.sendApprovalDecision(QStringLiteral("deny"));
        EXPECT_EQ(state.focusId.value(), row.after);
    }
}

TEST_F(ApprovalDeskTest, OnlyWhatShowsAnAnswerMovesAWaitingPill)
{
    enum class Outcome { passes, dropped, dismissed };
    constexpr auto sameCall = R"({"tool_name":"Bash","tool_input":{"n":1,"command":"ls"}})";
    const struct
    {
        const char *event;
        const char *session;
        const char *payload;
        Outcome outcome;
    } rows[] = {
        {"PostToolUse", "s", sameCall, Outcome::dismissed},
        {"PostToolUseFailure", "s", sameCall, Outcome::dismissed},
        {"PostToolUse", "other", sameCall, Outcome::dropped},
        {"PostToolUse", "s", R"({"tool_name":"Bash","tool_input":{"command":"ls"}})",
         Outcome::dropped},
        {"PostToolUse", "s", R"({"tool_name":"Read","tool_input":{"command":"ls","n":1}})",
         Outcome::dropped},
        {"PostToolUse", "s", R"({"tool_name":"Bash","tool_input":"ls"})", Outcome::dropped},
        {"Stop", "s", "{}", Outcome::dismissed},
        {"StopFailure", "s", "{}", Outcome::dismissed},
        {"UserPromptSubmit", "s", "{}", Outcome::dismissed},
        {"SessionEnd", "s", "{}", Outcome::dismissed},
        {"Interrupt", "s", "{}", Outcome::dismissed},
        {"Stop", "other", "{}", Outcome::dropped},
        {"PreToolUse", "s", sameCall, Outcome::dropped},
        {"Notification", "s", "{}", Outcome::dropped},
        {"SessionStart", "s", "{}", Outcome::dropped},
    };
    const HookRoute claude{QStringLiteral("integration_claude"), {}};
    const HookRoute other{QStringLiteral("agent_codex"), {}};
    for (const auto &row : rows) {
        const Peer peer = ask();
        state.noteMessage = std::nullopt;
        HookOrigin origin;
        origin.sessionId = QString::fromLatin1(row.session);
        const QString event = QString::fromLatin1(row.event);
        EXPECT_TRUE(desk.admits(event, other, origin, json(row.payload)));

        const bool isAdmitted = desk.admits(event, claude, origin, json(row.payload));
        EXPECT_EQ(isAdmitted, row.outcome != Outcome::dropped) << row.event;
        EXPECT_EQ(isPending(), row.outcome == Outcome::dropped) << row.event;
        EXPECT_EQ(state.noteMessage.value() == QStringLiteral("Handled in VS Code."),
                  row.outcome == Outcome::dismissed);
        EXPECT_EQ(peer.isReadable(), row.outcome == Outcome::dismissed) << row.event;
    }
    desk.sendApprovalDecision(QStringLiteral("deny"));
    EXPECT_TRUE(desk.admits(QStringLiteral("PreToolUse"), claude, {}, {}));
}

TEST_F(ApprovalDeskTest, AnswerToAnAgentThatIsGoneIsHarmless)
{
    for (const char *decision : {"allow", "deny"}) {
        Peer peer = ask();
        peer.close();
        desk.sendApprovalDecision(QLatin1String(decision));
        writers.waitForDone();
        queue.drain();
        EXPECT_FALSE(isPending());
    }
    EXPECT_EQ(state.noteMessage.value(), std::nullopt);
}

} // namespace
} // namespace tirlo
