#include "hooks/HookServer.h"
#include "HookFixture.h"
#include "Peer.h"
#include "hooks/RelayScripts.h"
#include "hooks/TroubleNote.h"

#include <QDir>

#include <sys/stat.h>

namespace tirlo {
namespace {

struct HookServerTest : HookFixture
{
    void startServer()
    {
        server.emplace(context, paths);
        server->start();
    }

    std::optional<HookServer> server;
};

qsizetype openDescriptors()
{
    return QDir(u"/proc/self/fd"_s).entryList(QDir::System | QDir::AllEntries).size();
}

mode_t modeOf(const QString &path)
{
    struct stat present = {};
    return lstat(QFile::encodeName(path).constData(), &present) == 0 ? present.st_mode & 07777 : 0;
}

TEST_F(HookServerTest, TenThousandConnectionsLeaveNoDescriptorOpen)
{
    startServer();
    const QByteArray request = R"({"hook_event_name":"PermissionRequest","term_program":"vscode"})";
    const QByteArray event = R"({"hook_event_name":"SubagentStart","term_program":"vscode"})";
    const QByteArray foreign = R"({"hook_event_name":"PermissionRequest"})";
    const QByteArray lines[] = {event, "", "garbage", request, request, foreign};
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
        server->sendApprovalDecision({Decision::allow});
        return openDescriptors() == before;
    })) << openDescriptors()
        << " instead of " << before;
}

TEST_F(HookServerTest, NoUmaskOpensItsFilesAndNoLinkInTheirPlaceLeadsToAnotherFile)
{
    const QStringList ours{paths.socketPath(), paths.hookScriptPath(), paths.relayScriptPath(),
                           paths.logFolder() + u"/qv.log"_s};
    QFile victim(home.filePath(u"victim"_s));
    const auto startBeside = [&](int (*link)(const char *, const char *), mode_t mask) {
        server.reset();
        QDir(home.filePath(u"Library"_s)).removeRecursively();
        const mode_t usual = umask(mask);
        for (const QString &path : link ? ours : QStringList()) {
            QDir().mkpath(QFileInfo(path).path());
            ASSERT_EQ(link(QFile::encodeName(victim.fileName()), QFile::encodeName(path)), 0);
        }
        startServer();
        log.appendAppLog(u"qv.log"_s, u"line"_s, u"yyyy-MM-dd HH:mm:ss"_s);
        log.flush();
        ASSERT_TRUE(eventually([this] { return modeOf(paths.socketPath()) == 0600; }));
        umask(usual);
    };
    for (const mode_t mask : {0000, 0022, 0077}) {
        for (const auto link : {::symlink, ::link, decltype(&::link)()}) {
            SCOPED_TRACE(testing::Message() << mask << (link == ::symlink ? " symbolic" : ""));
            ASSERT_TRUE(victim.open(QIODevice::WriteOnly | QIODevice::Truncate));
            victim.write("untouched");
            victim.close();
            startBeside(link, mask);
            ASSERT_TRUE(victim.open(QIODevice::ReadOnly));
            EXPECT_EQ(victim.readAll(), "untouched");
            victim.close();
            EXPECT_EQ(logLines().size(), 1);
            for (const QString &folder : {paths.supportFolder(), paths.logFolder()}) {
                EXPECT_EQ(modeOf(folder), mode_t(0700));
                // Whoever may write above it could put another in its place.
                EXPECT_TRUE(link || modeOf(QFileInfo(folder).path()) == mode_t(0700));
            }
            for (const auto &[path, script] :
                 {std::pair(paths.hookScriptPath(), RelayScripts::wrapper()),
                  {paths.relayScriptPath(), RelayScripts::relay()}}) {
                EXPECT_EQ(modeOf(path), mode_t(0755));
                QFile file(path);
                EXPECT_TRUE(file.open(QIODevice::ReadOnly) && file.readAll() == script);
            }
            EXPECT_EQ(QDir(paths.supportFolder()).entryList(QDir::Files).size(), 2);
            EXPECT_EQ(modeOf(ours.last()), mode_t(0600));
        }
    }
    victim.remove();
    startBeside(::symlink, 0022);
    EXPECT_FALSE(victim.exists()) << "nor does a dangling link make one";
}

TEST_F(HookServerTest, TroubleIsSaidOnceAndNotInPlaceOfTheGreetingOrOfARequest)
{
    TroubleNote trouble(context);
    const auto isSaid = [&] {
        queue.drain();
        return expanded.size() == 1;
    };
    island.setView(IslandView::greeting);
    trouble.set(u"the disk is full."_s);
    EXPECT_FALSE(isSaid());
    state.pendingApproval = ApprovalInfo();
    island.setView(IslandView::approval);
    EXPECT_FALSE(isSaid());
    state.pendingApproval = std::nullopt;
    EXPECT_TRUE(isSaid());
    EXPECT_EQ(state.noteMessage.value(), u"Agents can't reach Tirlo: the disk is full."_s);
    island.setView(IslandView::overview);
    trouble.set(u"the disk is full."_s);
    EXPECT_TRUE(isSaid()) << "and not again";

    // Once it is over, nothing of it stays on show or is said later.
    island.setView(IslandView::note);
    trouble.set({});
    EXPECT_NE(state.view.value(), IslandView::note);
    island.setView(IslandView::greeting);
    trouble.set(u"the disk is full."_s);
    trouble.set({});
    island.setView(IslandView::empty);
    EXPECT_TRUE(isSaid());
}

} // namespace
} // namespace tirlo
