#include "hooks/HookServer.h"
#include "HookFixture.h"
#include "Peer.h"

#include <QDir>

namespace tirlo {
namespace {

using HookServerTest = HookFixture;

qsizetype openDescriptors()
{
    return QDir(u"/proc/self/fd"_s).entryList(QDir::System | QDir::AllEntries).size();
}

TEST_F(HookServerTest, TenThousandConnectionsLeaveNoDescriptorOpen)
{
    HookServer server(context, paths);
    server.start();
    const QByteArray request = R"({"hook_event_name":"PermissionRequest","term_program":"vscode"})";
    const QByteArray lines[] = {
        R"({"hook_event_name":"SubagentStart","term_program":"vscode"})",
        "",
        "garbage",
        request,
        request,
        R"({"hook_event_name":"PermissionRequest"})",
    };
    EXPECT_EQ(Peer::connectedTo(paths.socketPath()).send("\n").receiveAll(), "{\"ok\":true}\n");
    const qsizetype before = openDescriptors();
    for (int i = 0; i < 10000; ++i) {
        Peer peer = Peer::connectedTo(paths.socketPath());
        ASSERT_TRUE(peer.isConnected());
        const QByteArray &line = lines[std::size_t(i) % std::size(lines)];
        peer.send(line + "\n");
        // Half of the peers wait for their reply, the others are gone at once.
        if (i % 2 == 0 && !line.contains("Permission")) {
            ASSERT_EQ(peer.receiveAll(), "{\"ok\":true}\n");
        }
        if (i % 20 == 0) {
            queue.drain();
            QCoreApplication::processEvents();
        }
    }
    EXPECT_TRUE(eventually([&] {
        server.sendApprovalDecision(u"allow"_s);
        return openDescriptors() == before;
    })) << openDescriptors()
        << " instead of " << before;
}

} // namespace
} // namespace tirlo
