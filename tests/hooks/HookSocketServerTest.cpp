#include "hooks/HookSocketServer.h"
#include "HookFixture.h"
#include "Peer.h"
#include "platform/SocketLine.h"
#include "support/Files.h"

#include <QElapsedTimer>

#include <unistd.h>

#include <cstdio>
#include <vector>

namespace tirlo {
namespace {

const QByteArray ok = "{\"ok\":true}\n";
const QByteArray stop = R"({"hook_event_name":"Stop"})";

struct HookSocketServerTest : HookFixture
{
    HookSocketServerTest() { serve(getuid()); }

    void serve(uid_t owner)
    {
        server = std::make_unique<HookSocketServer>(
            queue, path,
            HookSocketServer::Handlers{
                .event = [this](const QString &name, const QJsonObject &) { events += name; },
                .permissionRequest
                = [this](FileDescriptor connection,
                         const QJsonObject &) { requests.push_back(std::move(connection)); },
                .trouble = [this](const QString &trouble) { troubles += trouble; }},
            owner);
        server->start();
    }

    Peer connected() const { return Peer::connectedTo(path); }

    /// Sends the bytes and returns the reply, with the events that were handled in `events`.
    QByteArray exchange(const QByteArray &bytes)
    {
        events.clear();
        // Nothing runs on the main thread meanwhile: however busy it is, no agent waits for it.
        const QByteArray reply = connected().send(bytes).receiveAll();
        queue.drain();
        return reply;
    }

    const QString path = home.filePath(u"above/support/qv.sock"_s);
    QStringList events;
    QStringList troubles;
    std::vector<FileDescriptor> requests;
    std::unique_ptr<HookSocketServer> server;
};

TEST_F(HookSocketServerTest, EveryLineGetsItsReply)
{
    const QByteArray brackets(100000, '[');
    const QByteArray open = "{\"hook_event_name\":";
    const QByteArray name(0x100000 - 24, 'x');
    const std::pair<QByteArray, QStringList> rows[] = {
        {stop, {u"Stop"_s}},
        {stop + "\n{\"hook_event_name\":\"Interrupt\"}", {u"Stop"_s}},
        {"{}", {QString()}},
        {open + "[\"PermissionRequest\"]}", {QString()}},
        {open + '"' + name + "\"}", {QString::fromLatin1(name)}},
        {open + '"' + name + QByteArray(0x3018, 'x') + "\"}", {}},
        {open + "\"\xff\xfe\"}", {}},
        {open, {}},
        {"", {}},
        {"\n" + stop, {}},
        {"[" + stop + "]", {}},
        {stop + " trailing", {}},
        {brackets, {}},
        {"{\"a\":" + brackets + QByteArray(100000, ']') + "}", {}},
    };
    for (const auto &[bytes, handled] : rows) {
        EXPECT_EQ(exchange(bytes + "\n"), ok) << bytes.left(60).constData();
        EXPECT_EQ(events, handled) << bytes.left(60).constData();
    }
    EXPECT_TRUE(requests.empty());

    // The end of the stream ends a line, and a relay of a plain event is gone before the reply.
    EXPECT_EQ(connected().endOfStream().receiveAll(), ok);
    events.clear();
    connected().send(stop.first(9)).send(stop.sliced(9)).close();
    EXPECT_TRUE(eventually([&] { return events == QStringList(u"Stop"_s); }));
}

TEST_F(HookSocketServerTest, StalledSenderIsAnsweredAfterFiveSeconds)
{
    QElapsedTimer elapsed;
    elapsed.start();
    EXPECT_EQ(exchange(stop.chopped(1)), ok);
    EXPECT_GE(elapsed.elapsed(), 4900);
    EXPECT_LT(elapsed.elapsed(), 9000);
    EXPECT_TRUE(events.isEmpty());
}

TEST_F(HookSocketServerTest, ThirtyThirdReaderIsTurnedAwayAndARequestThatWaitsIsNone)
{
    std::vector<Peer> readers;
    for (int i = 0; i < 32; ++i)
        readers.push_back(connected());
    EXPECT_EQ(connected().receiveAll(), "");

    // Neither readers that are done nor a request, which keeps its connection, count.
    readers[0].send("{\"hook_event_name\":\"PermissionRequest\"}\n");
    ASSERT_TRUE(eventually([&] { return requests.size() == 1; }));
    EXPECT_EQ(exchange(stop + "\n"), ok);
    EXPECT_EQ(events, QStringList(u"Stop"_s));
    for (std::size_t i = 1; i < readers.size(); ++i)
        EXPECT_EQ(readers[i].send(stop + "\n").receiveAll(), ok);
    EXPECT_FALSE(readers[0].isReadable());
    sendLine(requests.front().get(), "{}");
    requests.clear();
    EXPECT_EQ(readers[0].receiveAll(), "{}\n");
}

TEST_F(HookSocketServerTest, ProcessOfAnotherUserIsTurnedAway)
{
    serve(getuid() + 1);
    EXPECT_EQ(exchange(stop + "\n"), "");
    EXPECT_TRUE(events.isEmpty());
}

TEST_F(HookSocketServerTest, EndsAtOnceWhileConnectionsAreOpen)
{
    Peer stalled = connected();
    stalled.send("{");
    connected().send("{\"hook_event_name\":\"PermissionRequest\"}\n").receiveAll(50);
    QElapsedTimer elapsed;
    elapsed.start();
    server.reset();
    EXPECT_LT(elapsed.elapsed(), 2000);
    EXPECT_FALSE(connected().isConnected());
    queue.drain();
    EXPECT_TRUE(requests.empty());
    EXPECT_TRUE(events.isEmpty());
}

TEST_F(HookSocketServerTest, ASocketThatIsLostIsThereAgainWithinFiveSeconds)
{
    const auto rename = [this](const QString &from, const char *to) {
        std::rename(qPrintable(home.filePath(from)), qPrintable(home.filePath(to)));
    };
    const std::pair<const char *, std::function<void()>> losses[] = {
        {"removed", [&] { QFile::remove(path); }},
        {"moved", [&] { rename(u"above/support/qv.sock"_s, "elsewhere"); }},
        {"replaced",
         [&] {
             writeFile(home.filePath(u"file"_s), "");
             rename(u"file"_s, "above/support/qv.sock");
         }},
        {"its folder removed", [&] { QDir(home.filePath(u"above"_s)).removeRecursively(); }},
        {"a folder above moved", [&] { rename(u"above"_s, "before"); }},
    };
    for (const auto &[name, lose] : losses) {
        QElapsedTimer elapsed;
        elapsed.start();
        lose();
        EXPECT_TRUE(eventually([this] { return connected().isConnected(); })) << name;
        EXPECT_LT(elapsed.elapsed(), 5000) << name;
        EXPECT_EQ(exchange(stop + "\n"), ok) << name;
    }
    EXPECT_EQ(troubles, QStringList(std::size(losses), QString())) << "each is told once";
}

TEST_F(HookSocketServerTest, WhatKeepsItFromListeningIsToldAndTriedAgain)
{
    auto first = std::move(server);
    serve(getuid());
    EXPECT_EQ(exchange(stop + "\n"), ok);
    EXPECT_EQ(events.size(), 1) << "a live socket is left to the one who listens";
    EXPECT_EQ(troubles, QStringList(u"another program has its socket."_s));
    first.reset();
    EXPECT_TRUE(eventually([this] { return troubles.size() == 2; }));
    EXPECT_EQ(exchange(stop + "\n"), ok);

    QFile::remove(path);
    ASSERT_TRUE(QDir().mkdir(path));
    EXPECT_TRUE(eventually([this] { return troubles.size() == 3; }));
    EXPECT_EQ(troubles.last(), u"a folder is in the place of its socket."_s);
    ASSERT_TRUE(QDir().rmdir(path));
    EXPECT_TRUE(eventually([this] { return connected().isConnected(); }));
    EXPECT_TRUE(eventually([this] { return troubles.last().isEmpty(); }));
}

TEST_F(HookSocketServerTest, PathThatIsTooLongIsReportedAndLeftAlone)
{
    static QString lastWarning;
    const QString longPath = u"/tmp/"_s + QString(98, u'é') + u"/x.sock"_s;
    const auto previous = qInstallMessageHandler(
        [](QtMsgType, const QMessageLogContext &, const QString &text) { lastWarning = text; });
    HookSocketServer(queue, longPath, {}).start();
    qInstallMessageHandler(previous);
    EXPECT_EQ(lastWarning, u"HookServer: socket path too long (208 bytes, max 104): "_s + longPath);
}

} // namespace
} // namespace tirlo
