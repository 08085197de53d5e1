#include "HookFixture.h"

#include "hooks/HookServer.h"

#include <QDir>

#include <gmock/gmock.h>

#include <sys/stat.h>

using namespace tirlo;

namespace {

mode_t modeOf(const QString &path)
{
    struct stat present = {};
    return lstat(QFile::encodeName(path).constData(), &present) == 0 ? present.st_mode & 07777 : 0;
}

/// Files of ours, and what somebody put in their place.
class HostileFilesTest : public HookFixture
{
protected:
    void start()
    {
        server.emplace(context, paths);
        server->start();
        log.appendAppLog(u"qv.log"_s, u"line"_s, u"yyyy"_s);
        ASSERT_TRUE(eventually([this] { return modeOf(paths.socketPath()) == 0600; }));
    }

    QStringList ours() const
    {
        return {paths.socketPath(), paths.hookScriptPath(), paths.relayScriptPath(),
                paths.logFolder() + u"/qv.log"_s};
    }

    std::optional<HookServer> server;
};

TEST_F(HostileFilesTest, NoUmaskOpensThemToOthers)
{
    for (const mode_t mask : {0000, 0022, 0077}) {
        SCOPED_TRACE(mask);
        QDir(home.filePath(u"Library"_s)).removeRecursively();
        const mode_t usual = umask(mask);
        start();
        umask(usual);
        EXPECT_EQ(modeOf(paths.supportFolder()), mode_t(0700));
        EXPECT_EQ(modeOf(paths.logFolder()), mode_t(0700));
        EXPECT_EQ(modeOf(ours().last()), mode_t(0600));
        server.reset();
    }
}

TEST_F(HostileFilesTest, NoLinkInTheirPlaceLeadsToAnotherFile)
{
    const QString victim = home.filePath(u"victim"_s);
    for (const bool isSymbolic : {true, false}) {
        SCOPED_TRACE(isSymbolic);
        QDir(home.filePath(u"Library"_s)).removeRecursively();
        QDir().mkpath(paths.supportFolder());
        QDir().mkpath(paths.logFolder());
        QFile file(victim);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly | QIODevice::Truncate));
        file.write("untouched");
        file.close();
        for (const QString &path : ours()) {
            const auto make = isSymbolic ? ::symlink : ::link;
            ASSERT_EQ(make(QFile::encodeName(victim), QFile::encodeName(path)), 0);
        }

        start();
        ASSERT_TRUE(file.open(QIODevice::ReadOnly));
        EXPECT_EQ(file.readAll(), "untouched");
        EXPECT_EQ(modeOf(paths.hookScriptPath()), mode_t(0755));
        EXPECT_TRUE(eventually([this] { return !QFileInfo(paths.socketPath()).isSymLink(); }));
        server.reset();
    }
}

} // namespace
