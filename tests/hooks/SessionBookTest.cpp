#include "hooks/SessionBook.h"
#include "HookFixture.h"
#include "hooks/HookTasks.h"

namespace tirlo {
namespace {

using enum BotState;

struct SessionBookTest : HookFixture
{
    SessionBookTest()
    {
        book.processEnded = [this](const SessionKey &key) {
            gone.append(key.id);
            book.end(key);
        };
    }

    /// Lets the session of VS Code's pill, or another built-in one, do something in a folder.
    SessionKey hear(const QString &id, const QString &folder = u"P"_s,
                    const QString &pill = u"integration_claude"_s,
                    const std::optional<ProcessId> &process = {})
    {
        HookOrigin origin;
        origin.sessionId = id;
        origin.projectName = folder;
        origin.cwd = u"/w/"_s + folder;
        origin.process = process;
        tasks.upsertWorkspaceTask(pill, folder, origin.cwd);
        book.hear({pill, {}, {}}, origin);
        return {pill, id};
    }

    AgentTask claude() const { return task(u"integration_claude"_s); }

    HookTasks tasks{state, notifications};
    SessionBook book{state, queue, processes};
    QStringList gone;
};

TEST_F(SessionBookTest, APillShowsItsMostUrgentSession)
{
    // From the least urgent up; the newest of equals leads.
    const BotState order[]
        = {idle, finished, working, thinking, searching, ratelimit, error, question, approval};
    for (const BotState moving : order) {
        const SessionKey key = hear(u"s%1"_s.arg(int(moving)), u"F%1"_s.arg(int(moving)));
        queue.advance(1);
        book.setState(key, moving);
        EXPECT_EQ(claude().state, moving);
        EXPECT_EQ(claude().name, u"F%1"_s.arg(int(moving)));
    }
    EXPECT_EQ(claude().sessions.size(), std::ssize(order));
    EXPECT_EQ(claude().sessionCwd, u"/w/F%1"_s.arg(int(approval)));
    for (auto moving = std::rbegin(order); moving != std::rend(order); ++moving) {
        EXPECT_TRUE(claude().state == *moving || *moving == thinking || *moving == working);
        book.setState({u"integration_claude"_s, u"s%1"_s.arg(int(*moving))}, idle);
    }
    EXPECT_EQ(claude().state, idle);
}

TEST_F(SessionBookTest, APillEndsWithItsLastSession)
{
    const QString codex = u"agent_codex"_s;
    const SessionKey first = hear(u"a"_s, u"P"_s, codex);
    const SessionKey second = hear(u"b"_s, u"Q"_s, codex);
    book.setState(first, thinking);
    const QDateTime early = queue.wallClock();
    queue.advance(7);
    book.setState(second, working);
    book.setStep(second, u"Lit · a"_s);
    EXPECT_EQ(
        task(codex).sessions,
        QList({AgentSession{u"a"_s, u"P"_s, {}, thinking, false, early},
               AgentSession{u"b"_s, u"Q"_s, u"Lit · a"_s, working, false, early.addSecs(7)}}));

    book.end(second);
    book.end(second);
    EXPECT_EQ(task(codex).state, thinking);
    EXPECT_EQ(task(codex).name, u"P"_s);
    book.end(first);
    EXPECT_FALSE(state.task(codex));

    // The main pill stays, without a trace of its sessions.
    book.setState(hear(u"c"_s), working);
    book.end({u"integration_claude"_s, u"c"_s});
    EXPECT_EQ(claude().state, idle);
    EXPECT_EQ(claude().name, u"VS Code"_s);
    EXPECT_TRUE(claude().sessions.isEmpty());
    book.setState({u"integration_claude"_s, u"c"_s}, working);
    EXPECT_EQ(claude().state, idle);
}

TEST_F(SessionBookTest, ASilentSessionComesToRest)
{
    const ProcessId process{7, 1, {}};
    const SessionKey worker = hear(u"w"_s);
    const SessionKey asker = hear(u"a"_s, u"P"_s, u"agent_codex"_s, process);
    hear(u"a"_s, u"P"_s, u"agent_codex"_s, process);
    const SessionKey lost = hear(u"l"_s, u"P"_s, u"agent_cursor"_s);
    book.setState(worker, working);
    book.fallBack(asker, {u"Bash"_s, {}, {}});
    book.fallBack(lost, {u"Bash"_s, {}, {}});
    queue.advance(599);
    EXPECT_EQ(claude().state, working);
    hear(u"w"_s);
    queue.advance(599);
    EXPECT_EQ(claude().state, working);
    // One that asks waits for its user, as long as its process is known to live.
    EXPECT_EQ(task(u"agent_codex"_s).state, approval);
    EXPECT_EQ(task(u"agent_cursor"_s).state, idle);
    queue.advance(2);
    EXPECT_EQ(claude().state, idle);
    queue.advance(3600);
    EXPECT_EQ(task(u"agent_codex"_s).sessions.first().waitsInTerminal, true);
    book.moveOn(asker);
    EXPECT_EQ(task(u"agent_codex"_s).state, working);
}

TEST_F(SessionBookTest, AKilledAgentEndsItsSessions)
{
    const ProcessId agent{7, 1, {}};
    const auto hearTwice = [&](const QString &id, const ProcessId &process) {
        hear(id, u"P"_s, u"integration_claude"_s, process);
        hear(id, u"P"_s, u"integration_claude"_s, process);
    };
    hearTwice(u"a"_s, agent);
    hearTwice(u"b"_s, agent);
    hearTwice(u"c"_s, {8, 1, {}});
    // A wrapper around the hook is another process at each event, and is not followed.
    hear(u"d"_s, u"P"_s, u"integration_claude"_s, ProcessId{9, 1, {}});
    hear(u"d"_s, u"P"_s, u"integration_claude"_s, ProcessId{9, 2, {}});
    EXPECT_EQ(processes.count(), 3);

    processes.end({9, 1, {}});
    processes.end(agent);
    EXPECT_EQ(gone, QStringList({u"a"_s, u"b"_s}));
    EXPECT_EQ(claude().sessions.size(), 2);
    EXPECT_EQ(processes.count(), 1);

    // What it had still sent comes late; its number may come anew.
    HookOrigin late;
    late.process = agent;
    EXPECT_TRUE(book.isPast({}, late));
    ++late.process->start;
    EXPECT_FALSE(book.isPast({}, late));
}

TEST_F(SessionBookTest, PillsOfTheSameFolderTellTheirAgent)
{
    const QString cursor = u"agent_cursor"_s;
    const QString codex = u"agent_codex"_s;
    hear(u"a"_s, u"P"_s);
    hear(u"b"_s, u"P"_s, cursor);
    hear(u"c"_s, u"Q"_s, codex);
    EXPECT_EQ(claude().name, u"P · Claude Code"_s);
    EXPECT_EQ(task(cursor).name, u"P · Cursor"_s);
    EXPECT_EQ(task(codex).name, u"Q"_s);
    hear(u"a"_s, u"P"_s);
    EXPECT_EQ(claude().name, u"P · Claude Code"_s);
    book.end({cursor, u"b"_s});
    EXPECT_EQ(claude().name, u"P"_s);
}

TEST_F(SessionBookTest, ManySessionsOfOneAgentTakeLittle)
{
    for (int i = 0; i < 50; ++i)
        book.setState(hear(QString::number(i)), i == 3 ? approval : working);
    EXPECT_EQ(claude().sessions.size(), 50);
    EXPECT_EQ(claude().state, approval);
    book.setState(hear(u"20"_s), idle);
    for (int i = 50; i < 1000; ++i) {
        queue.advance(0.1);
        book.setState(hear(QString::number(i)), idle);
    }
    // Those at rest went, the oldest first.
    EXPECT_EQ(claude().sessions.size(), 64);
    EXPECT_EQ(claude().sessions.last().id, u"999"_s);
    EXPECT_TRUE(std::ranges::none_of(claude().sessions,
                                     [](const auto &each) { return each.id == u"20"_s; }));
    EXPECT_EQ(std::ranges::count(claude().sessions, working, &AgentSession::state), 48);
}

} // namespace
} // namespace tirlo
