#include "hooks/Peer.h"
#include "kit/Agent.h"
#include "kit/Program.h"

#include <QDir>
#include <QProcess>

#include <sys/resource.h>

#include <gtest/gtest.h>

#include <vector>

using namespace tirlo::e2e;
using tirlo::Peer;

namespace {

const QByteArray event = R"({"hook_event_name":"PreToolUse","term_program":"vscode"})"
                         "\n";
const QByteArray ok = "{\"ok\":true}\n";

/// A server of the desktop that tells its address in its first line of output, and can be lost.
class Server
{
public:
    Server(const QString &program, const QStringList &arguments)
    {
        m_process.start(program, arguments);
        if (m_process.waitForReadyRead(20000))
            m_address = m_process.readLine().trimmed();
    }
    ~Server() { lose(); }

    [[nodiscard]] QByteArray address() const { return m_address; }

    void lose()
    {
        m_process.kill();
        m_process.waitForFinished();
    }

private:
    QProcess m_process;
    QByteArray m_address;
};

TEST(FaultTest, TooFewDescriptorsLeaveNobodyWithoutAnEnd)
{
    const Program program{TIRLO_PROGRAM};
    ASSERT_TRUE(program.isReady());
    // By then it has asked for the keyring, with a library that ends any program without
    // descriptors.
    rest(1500);
    const QDir descriptors("/proc/" + QString::number(program.processId()) + "/fd");
    const rlim_t few = descriptors.entryList(QDir::AllEntries | QDir::System).size() + 8;
    const rlimit limit{few, few};
    ASSERT_EQ(prlimit(pid_t(program.processId()), RLIMIT_NOFILE, &limit, nullptr), 0);

    std::vector<Peer> peers;
    for (int i = 0; i < 100; ++i) {
        // A full queue of connections holds up the one that connects.
        if (i > 40)
            peers[std::size_t(i) - 41].send(event);
        peers.push_back(Peer::connectedTo(program.socketPath()));
    }
    for (Peer &peer : peers) {
        const QByteArray reply = peer.send(event).receiveAll();
        EXPECT_TRUE(reply == ok || reply.isEmpty()) << reply.constData();
    }
    EXPECT_EQ(Peer::connectedTo(program.socketPath()).send(event).receiveAll(), ok);
}

TEST(FaultTest, TheSessionBusMayEnd)
{
    Server bus("dbus-daemon", {"--session", "--nofork", "--print-address"});
    const Program program{TIRLO_PROGRAM, {{"DBUS_SESSION_BUS_ADDRESS", bus.address()}}};
    ASSERT_TRUE(program.isReady());
    // By then it has asked the bus for the keyring and put itself into the tray.
    rest(1500);
    bus.lose();

    const Agent agent{program.hookScript(), "session-1", "/src/lighthouse"};
    const auto request = agent.askFor("Bash", {{"command", "make"}});
    EXPECT_TRUE(waitUntil([&] { return program.log().contains("PermissionRequest Bash"); }));
    rest(500);
    EXPECT_TRUE(program.isRunning());
    EXPECT_TRUE(request->isRunning());
}

TEST(FaultTest, TheEndOfTheXServerEndsTheProgramAndNoMore)
{
    const QStringList arguments{"-displayfd", "1", "-screen", "0", "1280x800x24"};
    Server screen("Xvfb", arguments);
    ASSERT_FALSE(screen.address().isEmpty());
    const QByteArray display = ':' + screen.address();
    Program program{TIRLO_PROGRAM, {{"DISPLAY", display}}};
    ASSERT_TRUE(program.isReady());
    const Agent agent{program.hookScript(), "session-1", "/src/lighthouse"};
    // Its sound plays while the screen goes.
    const auto request = agent.askFor("Bash", {{"command", "make"}});
    ASSERT_TRUE(waitUntil([&] { return program.log().contains("PermissionRequest Bash"); }));
    rest(300);

    screen.lose();
    ASSERT_TRUE(waitUntil([&] { return !program.isRunning(); }));
    EXPECT_FALSE(program.hasCrashed());
    EXPECT_TRUE(request->waitForEnd());
    EXPECT_EQ(request->exitCode(), 0);
    EXPECT_EQ(request->output(), "");

    Server again("Xvfb", QStringList{display} + arguments);
    ASSERT_EQ(':' + again.address(), display);
    EXPECT_TRUE(program.start());
}

} // namespace
