#include "hooks/HookSocketServer.h"
#include "HookFixture.h"
#include "Peer.h"
#include "hooks/SocketLine.h"

#include <QElapsedTimer>
#include <QFileInfo>

#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>

#include <fcntl.h>

#include <vector>

namespace tirlo {
namespace {

const QByteArray ok = "{\"ok\":true}\n";
const QByteArray stop = R"({"hook_event_name":"Stop"})";

struct HookSocketServerTest : HookFixture
{
    HookSocketServerTest()
    {
        server = std::make_unique<HookSocketServer>(
            queue, path,
            HookSocketServer::Handlers{
                .event = [this](const QString &name, const QJsonObject &) { events += name; },
                .permissionRequest
                = [this](FileDescriptor connection,
                         const QJsonObject &) { requests.push_back(std::move(connection)); }});
        server->start();
    }

    Peer connected() const { return Peer::connectedTo(path); }

    /// Sends the bytes and returns the reply, with the events that were handled in `events`.
    QByteArray exchange(const QByteArray &bytes)
    {
        events.clear();
        const QByteArray reply = connected().send(bytes).receiveAll();
        queue.drain();
        return reply;
    }

    const QString path = home.filePath(u"qv.sock"_s);
    QStringList events;
    std::vector<FileDescriptor> requests;
    std::unique_ptr<HookSocketServer> server;
};

TEST_F(HookSocketServerTest, EveryLineGetsItsReply)
{
    const QByteArray brackets(100000, '[');
    const struct
    {
        QByteArray bytes;
        QStringList events;
    } rows[] = {
        {stop + "\n", {u"Stop"_s}},
        {"\n", {}},
        {"\n" + stop + "\n", {}},
        {"  \n", {}},
        {"{\"hook_event_name\":\n", {}},
        {"null\n", {}},
        {"[" + stop + "]\n", {}},
        {"\"PermissionRequest\"\n", {}},
        {"{}\n", {QString()}},
        {"{\"hook_event_name\":[\"PermissionRequest\"]}\n", {QString()}},
        {stop + "\n{\"hook_event_name\":\"Interrupt\"}\n", {u"Stop"_s}},
        {stop + " trailing\n", {}},
        {"{\"hook_event_name\":\"\xff\xfe\"}\n", {}},
        {brackets + "\n", {}},
        {"{\"a\":" + brackets + QByteArray(100000, ']') + "}\n", {}},
        {"{\"hook_event_name\":\"" + QByteArray(0x100000 - 24, 'x') + "\"}\n",
         {QString(0x100000 - 24, u'x')}},
        {"{\"hook_event_name\":\"" + QByteArray(0x100000 + 0x3000, 'x') + "\"}\n", {}},
    };
    for (const auto &row : rows) {
        EXPECT_EQ(exchange(row.bytes), ok) << row.bytes.left(60).constData();
        EXPECT_EQ(events, row.events) << row.bytes.left(60).constData();
    }
    EXPECT_TRUE(requests.empty());

    // The end of the stream ends a line, and a relay of a plain event is gone before the reply.
    EXPECT_EQ(connected().endOfStream().receiveAll(), ok);
    events.clear();
    connected().send(stop.first(9)).send(stop.sliced(9)).close();
    EXPECT_TRUE(eventually([&] { return events == QStringList(u"Stop"_s); }));
}

TEST_F(HookSocketServerTest, PermissionRequestKeepsItsConnection)
{
    Peer peer = connected();
    peer.send("{\"hook_event_name\":\"PermissionRequest\"}\n");
    ASSERT_TRUE(eventually([&] { return requests.size() == 1; }));
    EXPECT_FALSE(peer.isReadable());
    EXPECT_EQ(exchange(stop + "\n"), ok);
    EXPECT_EQ(events, QStringList(u"Stop"_s));

    sendLine(requests.front().get(), "{}");
    requests.clear();
    EXPECT_EQ(peer.receiveAll(), "{}\n");
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

TEST_F(HookSocketServerTest, ThirtyThirdReaderIsTurnedAway)
{
    std::vector<Peer> readers;
    for (int i = 0; i < 32; ++i)
        readers.push_back(connected());
    EXPECT_EQ(connected().receiveAll(), "");

    // Neither readers that are done nor a waiting request count.
    EXPECT_EQ(readers[0].send("{\"hook_event_name\":\"PermissionRequest\"}\n").isConnected(), true);
    ASSERT_TRUE(eventually([&] { return requests.size() == 1; }));
    EXPECT_EQ(exchange(stop + "\n"), ok);
    for (std::size_t i = 1; i < readers.size(); ++i)
        EXPECT_EQ(readers[i].send(stop + "\n").receiveAll(), ok);
}

TEST_F(HookSocketServerTest, ProcessOfAnotherUserIsTurnedAway)
{
    if (getuid() != 0)
        GTEST_SKIP() << "only root can become somebody else";
    chmod(QFile::encodeName(home.path()).constData(), 0755);
    chmod(QFile::encodeName(path).constData(), 0666);
    const pid_t child = fork();
    if (child == 0) {
        if (setuid(65534) != 0)
            _exit(2);
        Peer peer = connected();
        _exit(peer.isConnected() && peer.send(stop + "\n").receiveAll().isEmpty() ? 0 : 1);
    }
    int status = -1;
    ASSERT_EQ(waitpid(child, &status, 0), child);
    EXPECT_EQ(WEXITSTATUS(status), 0);
    queue.drain();
    EXPECT_TRUE(events.isEmpty());
}

TEST_F(HookSocketServerTest, AcceptingSurvivesAMomentWithoutDescriptors)
{
    const auto unconnected
        = [] { return Peer(FileDescriptor(socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0))); };
    Peer first = unconnected();
    Peer second = unconnected();
    rlimit usual{};
    getrlimit(RLIMIT_NOFILE, &usual);
    const FileDescriptor next(fcntl(0, F_DUPFD_CLOEXEC, 0));
    const rlimit none{rlim_t(next.get()), usual.rlim_max};
    setrlimit(RLIMIT_NOFILE, &none);
    // An accept that was already waiting has its descriptor, so the first may still get through.
    first.connectTo(path);
    second.connectTo(path);
    EXPECT_EQ(second.send(stop + "\n").receiveAll(200), "...");
    setrlimit(RLIMIT_NOFILE, &usual);
    EXPECT_EQ(second.receiveAll(), ok);
    EXPECT_EQ(first.send("\n").receiveAll(), ok);
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

QString lastWarning;

TEST_F(HookSocketServerTest, PathThatIsTooLongIsReportedAndLeftAlone)
{
    const QString longPath = u"/tmp/"_s + QString(98, u'é') + u"/x.sock"_s;
    const auto previous = qInstallMessageHandler(
        [](QtMsgType, const QMessageLogContext &, const QString &text) { lastWarning = text; });
    HookSocketServer(queue, longPath, {}).start();
    qInstallMessageHandler(previous);
    EXPECT_EQ(lastWarning, u"HookServer: socket path too long (208 bytes, max 104): "_s + longPath);
}

TEST(SocketLine, GivesUpOnADescriptorThatWentBad)
{
    auto [peer, connection] = Peer::pair();
    peer.close();
    sendLine(connection.get(), QByteArray(1 << 20, 'x'));
    EXPECT_EQ(receiveLine(connection.get()), "");
}

} // namespace
} // namespace tirlo
