#include "InstallerFixture.h"

#include "support/FileSizeLimit.h"

#include <QProcess>

#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>

namespace tirlo {
namespace {

/// The user's file in the hands of a real file system, with its links, modes and faults.
struct HookFilesTest : InstallerFixture
{
    struct Agent
    {
        QString path;
        HookInstaller &installer;
        std::function<HookChange()> preview;

        void install() const
        {
            static_cast<void>(preview());
            installer.writeHooks();
        }
    };

    static unsigned modeOf(const QString &path)
    {
        struct stat info = {};
        return stat(QFile::encodeName(path), &info) == 0 ? info.st_mode & 07777u : 0;
    }

    /// One that is written in any case and one that is guarded.
    const Agent claude{paths.claudeSettingsPath(), installers.claude,
                       [this] { return installers.claude.buildHooksData(); }};
    const Agent codex{paths.codexHooksPath(), installers.codex,
                      [this] { return installers.codex.previewHooks(true); }};
    const QByteArray mine = R"({"mine": 1})";
};

TEST_F(HookFilesTest, ALinkedFileStaysALinkAndModesStay)
{
    for (const Agent &agent : {claude, codex}) {
        const QString dotfile = home.filePath("dotfiles/" + agent.path.section('/', -2));
        put(dotfile, mine);
        ASSERT_EQ(chmod(QFile::encodeName(dotfile), 0640), 0);
        const QString relay = home.filePath("dotfiles/link");
        QFile::remove(relay);
        const QFileInfo file(agent.path);
        QDir().mkpath(file.path());
        ASSERT_TRUE(QFile::link(dotfile, relay) && QFile::link(relay, agent.path));
        agent.install();
        EXPECT_TRUE(QFileInfo(agent.path).isSymLink() && QFileInfo(relay).isSymLink());
        EXPECT_FALSE(QFileInfo(dotfile).isSymLink());
        EXPECT_TRUE(bytesOf(dotfile).contains("qv-hook"));
        EXPECT_EQ(modeOf(dotfile), 0640u);
        EXPECT_EQ(besides(dotfile), QStringList());

        const QStringList backups = file.dir().entryList({file.fileName() + ".bak-*"});
        ASSERT_EQ(backups.size(), 1);
        const QString backup = file.dir().filePath(backups.first());
        EXPECT_EQ(bytesOf(backup), mine);
        EXPECT_EQ(modeOf(backup), 0640u) << "it may hold secrets as the file does";
    }
}

TEST_F(HookFilesTest, TheInstalledLineRunsTheScriptWhateverTheHomeIsCalled)
{
    put(paths.hookScriptPath(), "#!/bin/sh\nprintf '%s|' \"$0\" \"$@\"\n");
    ASSERT_EQ(chmod(QFile::encodeName(paths.hookScriptPath()), 0500), 0);
    const std::pair<Agent, QByteArray> rows[]{{claude, ""}, {codex, "--agent|codex|"}};
    for (const auto &[agent, arguments] : rows) {
        agent.install();
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
    ASSERT_EQ(chmod(QFile::encodeName(home.path()), 0755), 0);
    const bool isRoot = geteuid() == 0;
    for (const Agent &agent : {claude, codex}) {
        put(agent.path, mine);
        const QByteArray file = QFile::encodeName(agent.path);
        const QByteArray folder = QFile::encodeName(QFileInfo(agent.path).path());
        for (const Row &row : rows) {
            ASSERT_EQ(chmod(file, row.file) | chmod(folder, row.folder), 0);
            if (isRoot) {
                ASSERT_EQ(chown(file, ordinary, ordinary) | chown(folder, ordinary, ordinary), 0);
                ASSERT_EQ(setresuid(ordinary, ordinary, 0), 0);
            }
            const std::string message = messageOf([&] { agent.install(); });
            if (isRoot) {
                ASSERT_EQ(setresuid(0, 0, 0), 0);
            }
            EXPECT_NE(message, "");
            EXPECT_NE(message.find(row.message), std::string::npos) << message;
            ASSERT_EQ(chmod(folder, 0755) | chmod(file, 0644), 0);
            EXPECT_EQ(bytesOf(agent.path), mine) << message;
            EXPECT_EQ(besides(agent.path), QStringList()) << "the backup of a failed write goes";
        }
    }
}

TEST_F(HookFilesTest, AFileInTheFoldersPlaceIsNamed)
{
    put(QFileInfo(codex.path).path(), mine);
    EXPECT_EQ(messageOf([&] { codex.install(); }), "~/.codex: Not a directory");
}

TEST_F(HookFilesTest, AFullDiskLeavesTheOldFile)
{
    // Not even the backup fits, and no more than it.
    for (const rlim_t room : {5, 20}) {
        for (const Agent &agent : {claude, codex}) {
            put(agent.path, mine);
            std::string message;
            {
                const FileSizeLimit fullDisk(room);
                message = messageOf([&] { agent.install(); });
            }
            EXPECT_NE(message, "");
            EXPECT_EQ(bytesOf(agent.path), mine) << message;
            EXPECT_EQ(besides(agent.path), QStringList()) << message;
        }
    }
}

TEST_F(HookFilesTest, AWriterKilledAnywhereLeavesTheOldFileOrTheNew)
{
    QByteArray old = R"({"mine": [)";
    for (int i = 0; i < 100000; ++i)
        old += QByteArray::number(i) + ",\n";
    old += "0]}";
    put(codex.path, old);
    const QByteArray fresh = codex.preview().text.toUtf8();
    const QString backup = codex.path + ".bak-20260314-092653";
    int killed = 0;
    int survived = 0;
    // Ever later, until some come to their end: finely at first, as nobody knows how long one
    // takes.
    for (useconds_t delay = 0; survived < 3 && delay < 1000000; delay += 10 + delay / 50) {
        for (const QString &left : besides(codex.path))
            QFile::remove(QFileInfo(codex.path).dir().filePath(left));
        put(codex.path, old);
        const pid_t child = fork();
        if (child == 0) {
            codex.installer.writeHooks();
            _exit(0);
        }
        usleep(delay);
        kill(child, SIGKILL);
        int status = 0;
        ASSERT_EQ(waitpid(child, &status, 0), child);
        ++(WIFSIGNALED(status) ? killed : survived);

        const QByteArray found = bytesOf(codex.path);
        ASSERT_TRUE(found == old || found == fresh) << found.size() << " after " << delay;
        ASSERT_TRUE(!QFileInfo::exists(backup) || bytesOf(backup) == old) << "after " << delay;
        ASSERT_TRUE(found == old || QFileInfo::exists(backup)) << "after " << delay;
        ASSERT_TRUE(found == fresh || WIFSIGNALED(status)) << "after " << delay;
    }
    EXPECT_GT(killed, 20) << "too few writers were stopped before their end";
    EXPECT_EQ(survived, 3);
}

} // namespace
} // namespace tirlo
