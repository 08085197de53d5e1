#include "hooks/SilentEndWatch.h"
#include "HookFixture.h"
#include "hooks/HookTasks.h"
#include "support/Files.h"

#include <sys/stat.h>
#include <unistd.h>

namespace tirlo {
namespace {

constexpr auto prompt = R"({"type":"user","message":{"role":"user","content":"go"}})";
constexpr auto broken
    = R"({"type":"user","message":{"content":[{"type":"text","text":"[Request interrupted by user]"}]}})";

struct SilentEndWatchTest : HookFixture
{
    const QString transcript = home.filePath(u"t.jsonl"_s);

    static bool endsInInterrupt(const QString &file, const QDateTime &after)
    {
        return silentEnd({{}, file, 0, after}).kind == SilentEnd::Kind::brokenOff;
    }

    bool endsInterrupted(const QByteArray &text)
    {
        writeFile(transcript, text);
        return endsInInterrupt(transcript, {});
    }
};

TEST_F(SilentEndWatchTest, TheLastMessageTells)
{
    const QByteArray cut = QByteArray(300'000, 'x') + "\n";
    const struct
    {
        QByteArray text;
        bool isInterrupted;
    } rows[] = {
        {"", false},
        {QByteArray(prompt) + "\n" + broken + "\n", true},
        {QByteArray(broken) + "\n" + prompt + "\n", false},
        {QByteArray(broken) + "\n{\"type\":\"assistant\",\"message\":{}}\n", false},
        // What is no message of the session's own says nothing, nor does half a line.
        {QByteArray(broken) + "\n{\"type\":\"file-history-snapshot\"}\n[]\n\xff\n{\"type\":\"us",
         true},
        {QByteArray(broken) + "\n{\"type\":\"user\",\"isSidechain\":true}\n", true},
        {R"({"type":"user","message":{"content":[{"content":"x"},{"text":"[Request interrupted by user"}]}})",
         true},
        {R"({"type":"user","message":{"content":"[Request interrupted by user for tool use]"}})",
         true},
        {R"({"type":"user","message":{"content":"why [Request interrupted by user]?"}})", false},
        {R"({"type":"user","message":["[Request interrupted by user]"]})", false},
        {cut + broken + "\n", true},
        // Its last message is longer than what is read.
        {QByteArray(broken) + "\n" + cut, false},
    };
    for (const auto &row : rows)
        EXPECT_EQ(endsInterrupted(row.text), row.isInterrupted) << row.text.right(200).constData();

    EXPECT_FALSE(endsInInterrupt(transcript, QDateTime::currentDateTime().addSecs(60)));
    QByteArray dated = broken;
    dated.replace(0, 1, R"({"timestamp":"2026-11-25T08:00:00.500Z",)");
    writeFile(transcript, dated);
    const auto at = [](const char *time) {
        return QDateTime::fromString(QLatin1String(time), Qt::ISODateWithMs);
    };
    EXPECT_TRUE(endsInInterrupt(transcript, at("2026-11-25T08:00:00.400Z")));
    EXPECT_FALSE(endsInInterrupt(transcript, at("2026-11-25T08:00:00.600Z")));
}

TEST_F(SilentEndWatchTest, OtherAgentsTellInTheirOwnWords)
{
    using enum SilentEnd::Kind;
    const struct
    {
        const char *text;
        SilentEnd end;
    } rows[] = {
        // What is told anew after a turn was cancelled says nothing.
        {R"({"timestamp":"2026-11-25T08:00:01Z","type":"info","content":"Request cancelled."}
{"$set":{"lastUpdated":"2026-11-25T08:00:01Z"}}
{"timestamp":"2026-11-25T08:00:01Z","type":"user","content":[{"text":"go"}]}
{"timestamp":"2026-11-25T08:00:01Z","type":"gemini","content":"I will."})",
         {brokenOff, {}, false}},
        {R"({"timestamp":"2026-11-25T07:59:59Z","type":"info","content":"Request cancelled."}
{"timestamp":"2026-11-25T08:00:01Z","type":"user","content":[{"text":"go"}]})",
         {none, {}, false}},
        {R"({"timestamp":"2026-11-25T08:00:01Z","type":"error","content":"[API Error: {\"error\":{\"message\":\"No such model\",\"code\":400}}]"}
{"timestamp":"2026-11-25T08:00:01Z","type":"info","content":"This request failed."})",
         {failed, u"No such model"_s, false}},
        {R"({"timestamp":"2026-11-25T08:00:01Z","type":"event_msg","payload":{"type":"task_complete","error":{"message":"exceeded retry limit, last status: 429 Too Many Requests"}}})",
         {failed, u"exceeded retry limit, last status: 429 Too Many Requests"_s, true}},
        {R"({"timestamp":"2026-11-25T08:00:01Z","type":"event_msg","payload":{"type":"task_complete","error":null}})",
         {none, {}, false}},
        {R"({"timestamp":"2026-11-25T08:00:01Z","type":"event_msg","payload":{"type":"turn_aborted"}})",
         {brokenOff, {}, false}},
    };
    for (const auto &row : rows) {
        writeFile(transcript, row.text);
        EXPECT_EQ(
            silentEnd(
                {{}, transcript, 0, QDateTime::fromString(u"2026-11-25T08:00:00Z"_s, Qt::ISODate)}),
            row.end)
            << row.text;
    }
}

TEST_F(SilentEndWatchTest, AnAgentThatSaysItIsIdleWasBrokenOff)
{
    const QString root = home.filePath(u".claude"_s);
    ASSERT_TRUE(QDir(root).mkpath(u"projects/p"_s) && QDir(root).mkpath(u"sessions"_s));
    const TurnRecord record{u"s"_s, root + u"/projects/p/s.jsonl"_s, 7,
                            QDateTime::fromMSecsSinceEpoch(1000)};
    const auto kindAfter = [&](const char *status) {
        writeFile(root + u"/sessions/7.json"_s, status);
        return silentEnd(record).kind;
    };
    using enum SilentEnd::Kind;
    EXPECT_EQ(kindAfter(R"({"sessionId":"s","status":"idle","statusUpdatedAt":1001})"), brokenOff);
    for (const char *status : {R"({"sessionId":"s","status":"busy","statusUpdatedAt":1001})",
                               R"({"sessionId":"t","status":"idle","statusUpdatedAt":1001})",
                               R"({"sessionId":"s","status":"idle","statusUpdatedAt":999})", "[]"})
        EXPECT_EQ(kindAfter(status), none) << status;
}

TEST_F(SilentEndWatchTest, ReadsOnlyTheUsersOwnPlainFiles)
{
    writeFile(transcript, broken);
    const QString odd = home.filePath(u"odd"_s);
    const QByteArray path = QFile::encodeName(odd);
    EXPECT_FALSE(endsInInterrupt(odd, {}));
    EXPECT_FALSE(endsInInterrupt(home.path(), {}));
    EXPECT_FALSE(endsInInterrupt(u"/dev/zero"_s, {}));
    EXPECT_FALSE(endsInInterrupt({}, {}));

    ASSERT_EQ(mkfifo(path.constData(), 0600), 0);
    EXPECT_FALSE(endsInInterrupt(odd, {}));
    QFile::remove(odd);
    ASSERT_TRUE(QFile::link(transcript, odd));
    EXPECT_FALSE(endsInInterrupt(odd, {}));

    // A huge one is read as quickly as a small one.
    ASSERT_EQ(truncate(QFile::encodeName(transcript).constData(), off_t(2) << 30), 0);
    QFile file(transcript);
    ASSERT_TRUE(file.open(QIODevice::Append));
    file.write(QByteArray("\n") + broken + "\n");
    file.close();
    EXPECT_TRUE(endsInInterrupt(transcript, {}));

    if (getuid() != 0)
        GTEST_SKIP() << "not run as root";
    ASSERT_EQ(chown(QFile::encodeName(transcript).constData(), 65534, 65534), 0);
    EXPECT_FALSE(endsInInterrupt(transcript, {}));
}

TEST_F(SilentEndWatchTest, LooksWhileASilentSessionClaimsToWork)
{
    HookTasks tasks{state, notifications};
    SessionBook sessions{state, queue, processes};
    QStringList interrupted;
    SilentEndWatch watch{sessions, queue, [&](const SessionKey &key, const SilentEnd &) {
                             interrupted.append(key.id);
                             sessions.setState(key, BotState::idle);
                         }};
    queue.setWallClock(QDateTime::currentDateTime().addSecs(-60));
    writeFile(transcript, broken);
    HookOrigin origin;
    origin.sessionId = u"s"_s;
    origin.transcript = transcript;
    const HookRoute route{u"integration_claude"_s, {}, {}};
    const SessionKey key{route.pillId, origin.sessionId};

    const auto runs = [&](double seconds) {
        queue.advance(seconds);
        return eventually([&] { return !interrupted.isEmpty(); });
    };
    sessions.hear(route, origin);
    sessions.setState(key, BotState::thinking);
    watch.wake();
    queue.advance(3.5);
    sessions.hear(route, origin);
    queue.advance(3.5);
    EXPECT_TRUE(interrupted.isEmpty());
    EXPECT_TRUE(runs(3));
    EXPECT_EQ(interrupted, QStringList(u"s"_s));

    // Nothing works: nobody looks.
    watch.wake();
    queue.advance(60);
    QTest::qWait(20);
    queue.drain();
    EXPECT_EQ(interrupted.size(), 1);
}

} // namespace
} // namespace tirlo
