#include "InstallerFixture.h"

#include <QElapsedTimer>
#include <QProcess>

#include <sys/mount.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <limits>

namespace tirlo {
namespace {

/// The user's file in the hands of a real file system, with its links, modes and faults.
struct HookFilesTest : InstallerFixture
{
    /// Each installer's last step, after its preview.
    struct Agent
    {
        QString path;
        std::function<void()> preview;
        std::function<void()> write;
    };

    Agent guarded(GuardedHooks &installer, const QString &path)
    {
        return {path, [&] { static_cast<void>(installer.previewHooks(true)); },
                [&] { installer.writeHooks(); }};
    }

    /// Runs the work in a process of its own and returns what it returns.
    static std::string inChild(const std::function<std::string()> &work)
    {
        int ends[2];
        EXPECT_EQ(pipe(ends), 0);
        const pid_t child = fork();
        if (child == 0) {
            const std::string result = work();
            _exit(write(ends[1], result.data(), result.size()) < 0);
        }
        close(ends[1]);
        std::string result(1000, '\0');
        result.resize(
            std::size_t(std::max(read(ends[0], result.data(), result.size()), ssize_t(0))));
        close(ends[0]);
        waitpid(child, nullptr, 0);
        return result;
    }

    static unsigned modeOf(const QString &path)
    {
        struct stat info = {};
        return stat(QFile::encodeName(path), &info) == 0 ? info.st_mode & 07777u : 0;
    }

    const std::vector<Agent> agents{{paths.claudeSettingsPath(),
                                     [&] { static_cast<void>(installers.claude.buildHooksData()); },
                                     [&] { installers.claude.writeHooks(); }},
                                    guarded(installers.gemini, paths.geminiSettingsPath()),
                                    guarded(installers.antigravity, paths.antigravityHooksPath()),
                                    guarded(installers.codex, paths.codexHooksPath())};

    const QByteArray mine = R"({"mine": 1})";
};

TEST_F(HookFilesTest, ALinkedFileStaysALinkAndModesStay)
{
    for (const Agent &agent : {agents[0], agents[3]}) {
        const QString dotfile = home.filePath("dotfiles/" + agent.path.section('/', -2));
        put(dotfile, mine);
        ASSERT_EQ(chmod(QFile::encodeName(dotfile), 0640), 0);
        const QString relay = home.filePath("dotfiles/link");
        QFile::remove(relay);
        QDir().mkpath(QFileInfo(agent.path).path());
        ASSERT_TRUE(QFile::link(dotfile, relay) && QFile::link(relay, agent.path));
        agent.preview();
        agent.write();
        EXPECT_TRUE(QFileInfo(agent.path).isSymLink() && QFileInfo(relay).isSymLink());
        EXPECT_FALSE(QFileInfo(dotfile).isSymLink());
        EXPECT_TRUE(bytesOf(dotfile).contains("qv-hook"));
        EXPECT_EQ(modeOf(dotfile), 0640u);
        EXPECT_EQ(besides(dotfile), QStringList());

        const QStringList backups
            = QFileInfo(agent.path).dir().entryList({QFileInfo(agent.path).fileName() + ".bak-*"});
        ASSERT_EQ(backups.size(), 1);
        const QString backup = QFileInfo(agent.path).dir().filePath(backups.first());
        EXPECT_EQ(bytesOf(backup), mine);
        EXPECT_EQ(modeOf(backup), 0640u) << "it may hold secrets as the file does";
    }
}

TEST_F(HookFilesTest, TheInstalledLineRunsTheScriptWhateverTheHomeIsCalled)
{
    put(paths.hookScriptPath(), "#!/bin/sh\nprintf '%s|' \"$0\" \"$@\"\n");
    ASSERT_TRUE(QFile::setPermissions(paths.hookScriptPath(), QFile::ReadOwner | QFile::ExeOwner));
    const std::pair<Agent, QByteArray> rows[]{{agents[0], ""}, {agents[3], "--agent|codex|"}};
    for (const auto &[agent, arguments] : rows) {
        agent.preview();
        agent.write();
        const QString command
            = json(bytesOf(agent.path))["hooks"]["Stop"][0]["hooks"][0]["command"].toString();
        QProcess shell;
        shell.start("/bin/sh", {"-c", command});
        ASSERT_TRUE(shell.waitForFinished());
        EXPECT_EQ(shell.readAll(), paths.hookScriptPath().toUtf8() + '|' + arguments)
            << command.toStdString();
    }
}

TEST_F(HookFilesTest, AFileOrFolderThatMayNotBeReadOrWrittenStaysAsItIs)
{
    constexpr uid_t ordinary = 65534;
    struct Row
    {
        mode_t file;
        mode_t folder;
        std::string message;
    };
    const Row rows[]{{0444, 0755, ""}, {0644, 0555, ""}, {0200, 0755, "cannot be read"}};
    for (const Agent &agent : {agents[0], agents[3]}) {
        put(agent.path, mine);
        const QByteArray folder = QFile::encodeName(QFileInfo(agent.path).path());
        const QByteArray file = QFile::encodeName(agent.path);
        for (const Row &row : rows) {
            ASSERT_EQ(chmod(file, row.file), 0);
            ASSERT_EQ(chmod(folder, row.folder), 0);
            ASSERT_EQ(chmod(QFile::encodeName(home.path()), 0755), 0);
            const std::string message = inChild([&]() -> std::string {
                if (geteuid() == 0
                    && (chown(file, ordinary, ordinary) || chown(folder, ordinary, ordinary)
                        || setresuid(ordinary, ordinary, ordinary)))
                    return "no ordinary user";
                return messageOf([&] {
                    agent.preview();
                    agent.write();
                });
            });
            EXPECT_TRUE(!message.empty() && message != "no ordinary user");
            EXPECT_NE(message.find(row.message), std::string::npos) << message;
            ASSERT_EQ(chmod(folder, 0755) | chmod(file, 0644), 0);
            EXPECT_EQ(bytesOf(agent.path), mine) << message;
            EXPECT_EQ(besides(agent.path), QStringList()) << "the backup of a failed write goes";
        }
    }
}

TEST_F(HookFilesTest, AFileInTheFoldersPlaceIsNamed)
{
    put(QFileInfo(agents[3].path).path(), mine);
    agents[3].preview();
    EXPECT_EQ(messageOf(agents[3].write), "~/.codex: Not a directory");
}

TEST_F(HookFilesTest, ARealFullDiskLeavesTheOldFile)
{
    const std::string result = inChild([this]() -> std::string {
        const QByteArray place = QFile::encodeName(home.path());
        if (unshare(CLONE_NEWNS) || mount("none", "/", nullptr, MS_REC | MS_PRIVATE, nullptr)
            || mount("tmpfs", place, "tmpfs", 0, "size=64k"))
            return "no mount";
        for (const Agent &agent : agents)
            put(agent.path, mine);
        put(home.filePath("filler"), QByteArray(100000, 'x'));
        for (const Agent &agent : agents) {
            const std::string message = messageOf([&] {
                agent.preview();
                agent.write();
            });
            if (message.empty() || bytesOf(agent.path) != mine)
                return "\"" + message + "\" for " + agent.path.toStdString();
        }
        return "kept";
    });
    if (result == "no mount")
        GTEST_SKIP() << "mounting a small disk is not permitted here";
    EXPECT_EQ(result, "kept");
}

TEST_F(HookFilesTest, AWriterKilledAnywhereLeavesTheOldFileOrTheNew)
{
    const Agent &codex = agents[3];
    QByteArray old = R"({"mine": [)";
    for (int i = 0; i < 100000; ++i)
        old += QByteArray::number(i) + ",\n";
    old += "0]}";
    put(codex.path, old);
    codex.preview();

    const QString backup = codex.path + ".bak-20260314-092653";
    // The time that a write takes: the shortest of a few, as others may keep the machine busy.
    qint64 whole = std::numeric_limits<qint64>::max();
    for (int i = 0; i < 3; ++i) {
        QFile::remove(backup);
        put(codex.path, old);
        QElapsedTimer taken;
        taken.start();
        ASSERT_EQ(inChild([&] { return messageOf(codex.write); }), "");
        whole = std::min(whole, taken.nsecsElapsed());
    }
    const QByteArray fresh = bytesOf(codex.path);
    ASSERT_TRUE(fresh.contains("qv-hook"));

    constexpr int runs = 200;
    int killed = 0;
    for (int run = 0; run < runs; ++run) {
        for (const QString &left : besides(codex.path))
            QFile::remove(QFileInfo(codex.path).dir().filePath(left));
        put(codex.path, old);
        const pid_t child = fork();
        if (child == 0) {
            codex.write();
            _exit(0);
        }
        usleep(useconds_t(whole / 1000 * run / runs));
        kill(child, SIGKILL);
        int status = 0;
        ASSERT_EQ(waitpid(child, &status, 0), child);
        killed += WIFSIGNALED(status);

        const QByteArray found = bytesOf(codex.path);
        ASSERT_TRUE(found == old || found == fresh) << found.size() << " bytes in run " << run;
        ASSERT_TRUE(!QFileInfo::exists(backup) || bytesOf(backup) == old) << "in run " << run;
        ASSERT_TRUE(found == old || QFileInfo::exists(backup)) << "in run " << run;
    }
    EXPECT_GT(killed, runs / 4) << "too few writers were stopped before their end";
}

} // namespace
} // namespace tirlo
