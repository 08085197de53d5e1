#include "hooks/HookEventProcessor.h"
#include "HookFixture.h"
#include "Peer.h"
#include "hooks/ApprovalDesk.h"
#include "hooks/HookTasks.h"
#include "platform/ThreadGroup.h"
#include "support/Files.h"

namespace tirlo {
namespace {

struct HookEventProcessorTest : HookFixture
{
    /// An event of VS Code's session "session-1" unless the payload says otherwise.
    void process(const char *name, const QByteArray &payload = "{}")
    {
        QJsonObject whole = json(R"({"session_id":"session-1","term_program":"vscode",
                                     "cwd":"/w/Project"})");
        const QJsonObject extra = json(payload);
        for (auto it = extra.begin(); it != extra.end(); ++it)
            whole.insert(it.key(), it.value());
        processor.processEvent(QString::fromLatin1(name), whole);
    }

    ThreadGroup writers;
    HookTasks tasks{state, notifications};
    SessionBook sessions{state, queue, processes};
    ApprovalDesk desk{context, tasks, sessions, writers};
    HookEventProcessor processor{context, tasks, sessions, desk};
};

TEST_F(HookEventProcessorTest, EachEventMovesItsPill)
{
    using enum BotState;
    // Runs from top to bottom on one pill.
    const struct
    {
        const char *event;
        const char *payload;
        BotState state;
        const char *lastStep;
        const char *sound;
        bool isActive = true;
    } rows[] = {
        {"", "{}", idle, "", "", false},
        {"PostToolBatch", "{}", idle, "", "", false},
        {"SessionStart", "{}", idle, "", "work"},
        {"UserPromptSubmit", R"({"prompt":""})", thinking, "", ""},
        {"UserPromptSubmit", R"({"prompt":["x"]})", thinking, "", ""},
        {"UserPromptSubmit", R"({"prompt":"hello\nyou"})", thinking, "hello\nyou", ""},
        {"PreToolUse", R"({"tool_name":"Read","tool_input":{"path":"/a/b"}})", working, "Lit · b",
         ""},
        {"PreToolUse", R"({"tool_name":7,"tool_input":[1]})", working, "Tool", ""},
        {"SubagentStart", "{}", working, "+ subagent", ""},
        {"SubagentStop", "{}", working, "• subagent done", ""},
        {"Notification", R"({"message":"All is well."})", working, "• subagent done", ""},
        {"Notification", R"({"message":{"a":"?"}})", working, "• subagent done", ""},
        {"Notification", R"({"message":"Hit the RATE Limit?"})", ratelimit, "• subagent done",
         "rate"},
        {"PostToolUse", "{}", working, "• subagent done", ""},
        {"Notification", R"({"message":"Limite d'usage"})", ratelimit, "• subagent done", "rate"},
        {"Notification", R"({"message":" Go on?"})", question, " Go on?", ""},
        {"PreCompact", "{}", question, "Résume · contexte", ""},
        {"PostToolUseFailure", R"({"error":"Exit code 2\n**ls**: no"})", working,
         "⚠ failed · Exit code 2 ls: no", ""},
        {"StopFailure", R"({"agent_id":"a1"})", working, "• subagent failed", ""},
        {"Notification", R"({"notification_type":"permission_prompt"})", approval,
         "waiting in the terminal", ""},
        {"Notification", R"({"notification_type":"idle_prompt"})", idle, "waiting in the terminal",
         ""},
        {"Notification", R"({"notification_type":"ToolPermission"})", approval,
         "waiting in the terminal", ""},
        {"PostToolUseFailure", "{}", working, "⚠ failed", ""},
        {"StopFailure", R"({"error":"rate_limit"})", ratelimit, "⚠ failed", "rate"},
        {"StopFailure", "{}", error, "⚠ failed", "error"},
        {"Stop", R"({"message":"done"})", finished, "done", "finish"},
        {"Interrupt", "{}", idle, "done", "", false},
        {"SessionEnd", "{}", idle, "", "", false},
    };
    for (const auto &row : rows) {
        sounds.played.clear();
        process(row.event, row.payload);
        const AgentTask pill = task("integration_claude");
        EXPECT_EQ(pill.state, row.state) << row.event;
        EXPECT_EQ(pill.steps.isEmpty() ? QString() : pill.steps.last(),
                  QString::fromUtf8(row.lastStep))
            << row.event;
        EXPECT_EQ(sounds.played.join(u','), QLatin1String(row.sound)) << row.event;
        EXPECT_EQ(tasks.activeSessionId == u"session-1"_s, row.isActive) << row.event;
    }
    process("PreToolUse", R"({"session_id":"b"})");
    process("PostToolUse", R"({"session_id":"c"})");
    EXPECT_EQ(tasks.activeSessionId, u"b"_s);
}

TEST_F(HookEventProcessorTest, ATurnEndsInTheAgentsOwnWords)
{
    const auto outcomeOf = [this](const char *event, const char *payload) {
        process("UserPromptSubmit");
        EXPECT_EQ(task("integration_claude").outcome, QString());
        process(event, payload);
        return task("integration_claude").outcome;
    };
    process("Stop", R"({"last_assistant_message":"Early"})");
    EXPECT_EQ(outcomeOf("Stop", R"({"last_assistant_message":"It **works**."})"), "It works.");
    EXPECT_EQ(outcomeOf("Stop", R"({"prompt_response":"Done"})"), "Done");
    EXPECT_EQ(outcomeOf("Stop", R"({"last_assistant_message":[1]})"), "");
    EXPECT_EQ(outcomeOf("StopFailure", R"({"error":"unknown","last_assistant_message":"API 400"})"),
              "API 400");
    EXPECT_EQ(outcomeOf("StopFailure", R"({"error":"server_error"})"), "server error");
    EXPECT_EQ(outcomeOf("StopFailure", R"({"error":"unknown"})"), "");
    process("PostToolUseFailure", R"({"error":"No such file"})");
    process("StopFailure", R"({"error":"unknown"})");
    EXPECT_EQ(task("integration_claude").outcome, "No such file");

    // Another session of the pill leaves it.
    process("UserPromptSubmit", R"({"session_id":"b"})");
    EXPECT_EQ(task("integration_claude").outcome, "No such file");
}

TEST_F(HookEventProcessorTest, WritesWhatItDoesToTheLog)
{
    process("SessionStart", R"({"session_id":"123456789"})");
    process("PreToolUse", R"({"tool_name":"Ba\nsh"})");
    process("Stop", R"({"term_program":"xterm","cwd":"/a/%1"})");
    EXPECT_EQ(logLines(),
              QStringList({u"SessionStart Project (12345678)"_s, u"PreToolUse Ba\\u000Ash"_s,
                           u"Ignored Stop from xterm (%1): the setting anyTerminal is off"_s}));
    state.anyTerminal = true;
    process("SessionStart", R"({"term_program":"xterm","cwd":"/a/b"})");
    EXPECT_EQ(task("integration_claude").name, u"b"_s);
}

TEST_F(HookEventProcessorTest, EndOfATurnOpensTheIslandOrMarksThePill)
{
    process("Stop");
    process("StopFailure");
    EXPECT_EQ(expanded, QList({IslandView::finished, IslandView::error}));
    EXPECT_EQ(task("integration_claude").pillBadge, std::nullopt);

    const char *cursor = R"({"bundle_id":"com.todesktop.230313mzl4w4u92"})";
    process("SessionStart", cursor);
    process("Stop", cursor);
    EXPECT_EQ(task("agent_cursor").pillBadge, PillBadge::finished);
    process("StopFailure", cursor);
    EXPECT_EQ(task("agent_cursor").pillBadge, PillBadge::error);
    EXPECT_EQ(expanded.size(), 2);

    // A start shows a hidden one, though to a user who is there alone.
    reveals = 0;
    state.isPresent = false;
    process("SessionStart");
    EXPECT_EQ(reveals, 0);
    state.isPresent = true;
    process("UserPromptSubmit");
    EXPECT_EQ(reveals, 1);
}

TEST_F(HookEventProcessorTest, FinishedPillsFallBackAfterAWhileUnlessTheyGoOn)
{
    state.toggleIntegration(u"agent_gemini"_s);
    const char *agents[]
        = {R"({"tirlo_agent":"codex"})", R"({"tirlo_agent":"gemini"})", R"({"tirlo_agent":"foo"})",
           R"({"tirlo_agent":"bar"})", R"({"bundle_id":"com.todesktop.230313mzl4w4u92"})"};
    for (const char *agent : agents) {
        process("PreToolUse", agent);
        process("Stop", agent);
    }
    queue.advance(5.1);
    EXPECT_EQ(task("agent_codex").pillBadge, PillBadge::finished);
    EXPECT_EQ(task("agent_foo").state, BotState::finished);
    process("UserPromptSubmit", agents[3]);
    process("PreToolUse", agents[4]);
    process("SubagentStop", agents[0]);

    queue.advance(0.2);
    EXPECT_EQ(task("agent_codex").state, BotState::idle);
    EXPECT_EQ(task("agent_codex").pillBadge, std::nullopt);
    EXPECT_EQ(task("agent_gemini").state, BotState::idle);
    EXPECT_TRUE(task("agent_gemini").steps.isEmpty());
    EXPECT_FALSE(state.task(u"agent_foo"_s));
    EXPECT_EQ(task("agent_codex").steps.last(), u"• subagent done"_s);

    // These went on within that while, and no longer show an end.
    EXPECT_EQ(task("agent_bar").state, BotState::thinking);
    EXPECT_EQ(task("agent_cursor").state, BotState::working);
    for (const char *pill : {"agent_bar", "agent_cursor"})
        EXPECT_EQ(task(pill).pillBadge, std::nullopt) << pill;
}

TEST_F(HookEventProcessorTest, ARequestWithinThatWhileKeepsItsMood)
{
    for (const bool isAnswered : {true, false}) {
        process("Stop");
        auto [peer, connection] = Peer::pair();
        desk.processPermissionRequest(std::move(connection), json(R"({"term_program":"vscode"})"));
        if (isAnswered)
            desk.sendApprovalDecision({Decision::allow});
        queue.advance(6);
        EXPECT_EQ(task("integration_claude").state,
                  isAnswered ? BotState::working : BotState::approval);
    }
}

TEST_F(HookEventProcessorTest, ACardOfATurnsEndGoesWhenItsSessionMovesOn)
{
    const auto viewAfter = [this](const char *event, IslandView before, const char *agent = "{}") {
        island.setView(before);
        process(event, agent);
        return state.view.value();
    };
    const char *codex = R"({"tirlo_agent":"codex"})";
    for (const char *event : {"SessionStart", "UserPromptSubmit", "PreToolUse"}) {
        SCOPED_TRACE(event);
        process("Stop");
        for (const char *other : {R"({"session_id":"b"})", R"({"agent_id":"a1"})"})
            EXPECT_EQ(viewAfter(event, IslandView::finished, other), IslandView::finished);
        EXPECT_EQ(task("integration_claude").sessions.first().state == BotState::finished,
                  event != QByteArray("UserPromptSubmit"))
            << "a subagent outlives the turn";
        EXPECT_EQ(viewAfter(event, IslandView::finished), IslandView::overview);
        process("StopFailure");
        EXPECT_EQ(viewAfter(event, IslandView::error), IslandView::overview);
        EXPECT_EQ(viewAfter(event, IslandView::finished, codex), IslandView::finished);
        EXPECT_EQ(viewAfter(event, IslandView::prompt), IslandView::prompt);
    }
}

TEST_F(HookEventProcessorTest, OneSessionsEndLeavesTheOther)
{
    process("UserPromptSubmit", R"({"session_id":"a"})");
    process("PreToolUse", R"({"session_id":"b"})");
    process("SessionEnd", R"({"session_id":"b"})");
    EXPECT_EQ(task("integration_claude").state, BotState::thinking);
    EXPECT_EQ(task("integration_claude").sessions.size(), 1);

    // Nor does one that asks keep the other from going on.
    auto [peer, connection] = Peer::pair();
    desk.processPermissionRequest(std::move(connection),
                                  json(R"({"term_program":"vscode","session_id":"c"})"));
    process("SessionEnd", R"({"session_id":"a"})");
    EXPECT_TRUE(state.pendingApproval.value());
    EXPECT_EQ(task("integration_claude").state, BotState::approval);
    EXPECT_EQ(task("integration_claude").sessions.size(), 1);
}

TEST_F(HookEventProcessorTest, APillIsMarkedWhileItHasAReason)
{
    // Of two sessions of a pill that is not in focus.
    const struct
    {
        const char *event;
        const char *session;
        const char *payload;
        std::optional<PillBadge> badge;
    } rows[] = {
        {"Notification", "a", R"("notification_type":"ToolPermission")", PillBadge::approval},
        {"PostToolUse", "a", "", std::nullopt},
        {"StopFailure", "a", "", PillBadge::error},
        {"UserPromptSubmit", "a", "", std::nullopt},
        {"Notification", "b", R"("notification_type":"ToolPermission")", PillBadge::approval},
        {"Stop", "a", "", PillBadge::approval},
        {"", "", "", PillBadge::approval},
        {"PostToolUseFailure", "b", R"("is_interrupt":true)", std::nullopt},
    };
    for (const char *id : {"a", "b"})
        process("SessionStart",
                QByteArray(R"({"tirlo_agent":"codex","session_id":")") + id + "\"}");
    for (const auto &row : rows) {
        QByteArray payload = R"({"tirlo_agent":"codex","session_id":")";
        payload += QByteArray(row.session) + '"' + (*row.payload ? "," : "") + row.payload + '}';
        process(row.event, payload);
        if (!*row.event)
            queue.advance(6);
        EXPECT_EQ(task("agent_codex").pillBadge, row.badge) << row.event << row.session;
    }
}

TEST_F(HookEventProcessorTest, WhatComesAfterAGoodbyeIsNotHeard)
{
    process("PreToolUse");
    process("SessionEnd", R"({"reason":"other"})");
    process("PostToolUse");
    EXPECT_TRUE(task("integration_claude").sessions.isEmpty());
    EXPECT_EQ(task("integration_claude").state, BotState::idle);
    process("SessionStart", R"({"source":"resume"})");
    EXPECT_EQ(task("integration_claude").sessions.size(), 1);
}

TEST_F(HookEventProcessorTest, AnInterruptIsNoticedAfterACard)
{
    queue.setWallClock(QDateTime::currentDateTime().addSecs(-600));
    const QString transcript = home.filePath(u"t.jsonl"_s);
    writeFile(transcript,
              R"({"type":"user","message":{"content":"[Request interrupted by user]"}})");
    const QByteArray payload
        = R"({"session_id":"session-1","term_program":"vscode","transcript_path":")"
        + transcript.toUtf8() + "\"}";
    for (const bool isAnswered : {true, false}) {
        process("PreToolUse", payload);
        auto [peer, connection] = Peer::pair();
        desk.processPermissionRequest(std::move(connection), json(payload));
        queue.advance(20);
        QTest::qWait(20);
        queue.drain();
        EXPECT_TRUE(state.pendingApproval.value()) << "it still asks here";
        if (isAnswered)
            desk.sendApprovalDecision({Decision::allow});
        else
            queue.advance(116);
        queue.advance(5);
        EXPECT_TRUE(eventually([&] { return task("integration_claude").state == BotState::idle; }));
    }
}

TEST_F(HookEventProcessorTest, AWordlessEndIsWhatTheAgentsOwnAccountSays)
{
    const QString transcript = home.filePath(u"t.jsonl"_s);
    const QByteArray gemini
        = R"({"tirlo_agent":"gemini","prompt_response":"[no response text]","transcript_path":")"
        + transcript.toUtf8() + "\"}";
    for (const bool hasFailed : {true, false}) {
        queue.setWallClock(QDateTime::currentDateTime().addSecs(-600));
        process("UserPromptSubmit", gemini);
        state.focusId = u"agent_gemini"_s;
        if (hasFailed)
            writeFile(transcript, R"({"type":"error","content":"[API Error: no]"})");
        else
            QFile::remove(transcript);
        process("Stop", gemini);
        EXPECT_EQ(task("agent_gemini").state, BotState::thinking);
        for (int i = 0; i < 10; ++i) {
            queue.advance(1);
            QTest::qWait(5);
            queue.drain();
        }
        EXPECT_EQ(task("agent_gemini").state, hasFailed ? BotState::error : BotState::idle);
        EXPECT_EQ(task("agent_gemini").outcome, hasFailed ? u"no"_s : QString());
    }
    EXPECT_EQ(expanded, QList{IslandView::error});
}

TEST_F(HookEventProcessorTest, AnEndStaysWhileItIsLookedAt)
{
    const char *gemini = R"({"tirlo_agent":"gemini","cwd":"/w/Buoy","prompt_response":"Done"})";
    process("UserPromptSubmit", gemini);
    state.focusId = u"agent_gemini"_s;
    process("Stop", gemini);
    island.setMode(IslandMode::expanded);
    island.setView(IslandView::finished);
    process("SessionEnd", gemini);
    queue.advance(30);
    EXPECT_EQ(task("agent_gemini").outcome, "Done");
    EXPECT_EQ(task("agent_gemini").outcomeFolder, "Buoy");
    island.setView(IslandView::overview);
    queue.advance(6);
    EXPECT_FALSE(state.task(u"agent_gemini"_s));
}

TEST_F(HookEventProcessorTest, AClearedSessionHandsItsPillOn)
{
    const QString codex = u"agent_codex"_s;
    const auto tell = [this](const char *event, const char *id, const char *key, const char *why) {
        process(event,
                qPrintable(u"{\"tirlo_agent\":\"codex\",\"session_id\":\"%1\",\"%2\":\"%3\"}"_s.arg(
                    QLatin1String(id), QLatin1String(key), QLatin1String(why))));
    };
    tell("UserPromptSubmit", "a", "prompt", "hello");
    tell("SessionEnd", "a", "reason", "clear");
    EXPECT_EQ(task("agent_codex").state, BotState::idle);
    tell("SessionStart", "b", "source", "clear");
    queue.advance(10);
    EXPECT_EQ(task("agent_codex").sessions.size(), 1);
    EXPECT_TRUE(task("agent_codex").steps.isEmpty()) << "the new talk has none yet";

    // A shorter memory is no new session, and shows nothing.
    tell("UserPromptSubmit", "b", "prompt", "on");
    island.setView(IslandView::prompt);
    tell("SessionStart", "b", "source", "compact");
    EXPECT_EQ(task("agent_codex").state, BotState::thinking);
    EXPECT_EQ(state.view, IslandView::prompt);

    // Where nothing takes its place the pill goes.
    tell("SessionEnd", "b", "reason", "clear");
    queue.advance(10);
    EXPECT_FALSE(state.task(codex));
}

TEST_F(HookEventProcessorTest, AKilledAgentLeavesNothingBehind)
{
    const char *codex
        = R"({"tirlo_agent":"codex","tirlo_process":{"pid":7,"start":1},"session_id":"k"})";
    process("SessionStart", codex);
    process("UserPromptSubmit", codex);
    auto [peer, connection] = Peer::pair();
    desk.processPermissionRequest(std::move(connection), json(codex));
    processes.end({7, 1, {}});
    EXPECT_FALSE(state.task(u"agent_codex"_s));
    EXPECT_FALSE(state.pendingApproval.value());
    EXPECT_EQ(tasks.activeSessionId, std::nullopt);
    process("PreToolUse", codex);
    EXPECT_FALSE(state.task(u"agent_codex"_s));
}

} // namespace
} // namespace tirlo
