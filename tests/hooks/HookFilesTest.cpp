#include "InstallerFixture.h"

#include "hooks/RelayScripts.h"
#include "support/FileSizeLimit.h"

#include <QFile>

#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <cstdio>
#include <cstdlib>

namespace tirlo {
namespace {

/// The user's file in the hands of a real file system, with its links, modes and faults: for an
/// agent whose file is written in any case, and for one whose file is guarded.
struct HookFilesTest : InstallerFixture
{
    HookChange preview(const QString &path)
    {
        return path == claudePath ? claude.buildHooksData() : codex.previewHooks(true);
    }

    std::string install(const QString &path)
    {
        return messageOf([&] {
            static_cast<void>(preview(path));
            path == claudePath ? claude.writeHooks() : codex.writeHooks();
        });
    }

    /// Expects that the installation fails and leaves the file alone.
    void expectRefused(const QString &path, const std::string &words, const std::string &message)
    {
        EXPECT_NE(message, "");
        EXPECT_NE(message.find(words), std::string::npos) << message;
        EXPECT_EQ(contents(path), mine) << message;
        EXPECT_EQ(besides(path), QStringList()) << "the backup of a failed write goes";
    }

    static unsigned modeOf(const QString &path)
    {
        struct stat info = {};
        return stat(QFile::encodeName(path), &info) == 0 ? info.st_mode & 07777u : 0;
    }

    const QByteArray mine = R"({"mine": 1})";
    const QStringList both{claudePath, codexPath};
};

TEST_F(HookFilesTest, ALinkedFileStaysALinkAndModesStay)
{
    for (const QString &path : both) {
        const QString dotfile = home.filePath("dotfiles/" + path.section('/', -2));
        const QString relay = path + ".relay";
        writeFile(dotfile, mine);
        ASSERT_EQ(chmod(QFile::encodeName(dotfile), 0640), 0);
        const QDir folder = QFileInfo(path).dir();
        ASSERT_TRUE(folder.mkpath(".") && QFile::link(dotfile, relay) && QFile::link(relay, path));
        EXPECT_EQ(install(path), "");
        EXPECT_TRUE(QFileInfo(path).isSymLink() && QFileInfo(relay).isSymLink());
        EXPECT_FALSE(QFileInfo(dotfile).isSymLink());
        EXPECT_TRUE(contents(dotfile).contains("qv-hook"));
        EXPECT_EQ(modeOf(dotfile), 0640u);
        EXPECT_EQ(besides(dotfile), QStringList());

        const QStringList backups = folder.entryList({"*.bak-*"});
        ASSERT_EQ(backups.size(), 1);
        EXPECT_EQ(contents(folder.filePath(backups.first())), mine);
        EXPECT_EQ(modeOf(folder.filePath(backups.first())), 0640u) << "it may hold secrets too";
    }
}

TEST_F(HookFilesTest, TheInstalledLineRunsTheScriptWhateverTheHomeIsCalled)
{
    writeFile(paths.hookScriptPath(), "#!/bin/sh\nprintf '%s|' \"$0\" \"$@\"\n");
    ASSERT_EQ(chmod(QFile::encodeName(paths.hookScriptPath()), 0500), 0);
    for (const QString &path : both) {
        EXPECT_EQ(install(path), "");
        const QString command
            = json(contents(path))["hooks"]["Stop"][0]["hooks"][0]["command"].toString();
        QFile output;
        FILE *shell = popen(qPrintable(command), "re");
        ASSERT_TRUE(shell && output.open(shell, QIODevice::ReadOnly));
        const QByteArray arguments = path == claudePath ? "" : "--agent|codex|";
        EXPECT_EQ(output.readAll(), paths.hookScriptPath().toUtf8() + '|' + arguments);
        EXPECT_EQ(pclose(shell), 0);
    }
}

TEST_F(HookFilesTest, AFileOrFolderThatMayNotBeReadOrWrittenStaysAsItIs)
{
    constexpr uid_t ordinary = 65534;
    const std::tuple<mode_t, mode_t, std::string> rows[]{
        {0444, 0755, ""}, {0644, 0555, ""}, {0200, 0755, "cannot be read"}};
    ASSERT_EQ(chmod(QFile::encodeName(home.path()), 0755), 0);
    const bool isRoot = geteuid() == 0;
    for (const QString &path : both) {
        writeFile(path, mine);
        const QByteArray file = QFile::encodeName(path);
        const QByteArray folder = QFile::encodeName(QFileInfo(path).path());
        for (const auto &[fileMode, folderMode, words] : rows) {
            ASSERT_EQ(chmod(file, fileMode) | chmod(folder, folderMode), 0);
            if (isRoot) {
                ASSERT_EQ(chown(file, ordinary, ordinary) | chown(folder, ordinary, ordinary), 0);
                ASSERT_EQ(setresuid(ordinary, ordinary, 0), 0);
            }
            const std::string message = install(path);
            ASSERT_TRUE(!isRoot || setresuid(0, 0, 0) == 0);
            ASSERT_EQ(chmod(folder, 0755) | chmod(file, 0644), 0);
            expectRefused(path, words, message);
        }
    }
    QDir(QFileInfo(codexPath).path()).removeRecursively();
    writeFile(QFileInfo(codexPath).path(), mine);
    EXPECT_EQ(install(codexPath), "~/.codex: Not a directory");
}

TEST_F(HookFilesTest, AFullDiskLeavesTheOldFile)
{
    // Not even the backup fits, and no more than it.
    for (const rlim_t room : {5, 20}) {
        for (const QString &path : both) {
            writeFile(path, mine);
            std::string message;
            {
                const FileSizeLimit fullDisk(room);
                message = install(path);
            }
            expectRefused(path, "", message);
        }
    }
}

TEST_F(HookFilesTest, AWriterKilledAnywhereLeavesTheOldFileOrTheNew)
{
    QByteArray old = R"({"mine": [)";
    for (int i = 0; i < 100000; ++i)
        old += QByteArray::number(i) + ",\n";
    old += "0]}";
    writeFile(codexPath, old);
    const QByteArray fresh = preview(codexPath).text.toUtf8();
    const QString backup = codexPath + ".bak-20260314-092653";
    int killed = 0;
    int survived = 0;
    // Ever later, until some come to their end: finely at first, as nobody knows how long one
    // takes.
    for (useconds_t delay = 0; survived < 3 && delay < 1000000; delay += 10 + delay / 50) {
        for (const QString &left : besides(codexPath))
            QFile::remove(QFileInfo(codexPath).dir().filePath(left));
        writeFile(codexPath, old);
        const pid_t child = fork();
        if (child == 0) {
            codex.writeHooks();
            _exit(0);
        }
        usleep(delay);
        kill(child, SIGKILL);
        int status = 0;
        ASSERT_EQ(waitpid(child, &status, 0), child);
        ++(WIFSIGNALED(status) ? killed : survived);

        const QByteArray found = contents(codexPath);
        const bool hasBackup = QFileInfo::exists(backup);
        ASSERT_TRUE(found == old ? WIFSIGNALED(status) : found == fresh && hasBackup) << delay;
        ASSERT_TRUE(!hasBackup || contents(backup) == old) << "after " << delay;
    }
    EXPECT_GT(killed, 20) << "too few writers were stopped before their end";
    EXPECT_EQ(survived, 3);
}

TEST_F(HookFilesTest, AHomeWhoseNameIsNoTextIsWiredAllTheSame)
{
    const QByteArray name = home.path().toUtf8() + "/\xff\xe9";
    ASSERT_EQ(mkdir(name.constData(), 0700), 0);
    const QByteArray before = qgetenv("HOME");
    qputenv("HOME", name);
    const Paths odd = Paths::ofUser();
    RelayScripts::installHookScript(odd);
    HookInstallers wiring(odd, queue);
    static_cast<void>(wiring.claude.buildHooksData());
    wiring.claude.writeHooks();
    const QByteArray written = contents(odd.home() + u"/.claude/settings.json"_s);
    const QString command = json(written)["hooks"]["Stop"][0]["hooks"][0]["command"].toString();
    EXPECT_EQ(std::system(qPrintable(u"test -x "_s + command)), 0) << command.toStdString();
    EXPECT_FALSE(wiring.claude.hooksNeedUpdate());
    EXPECT_EQ(odd.hookScriptShown(), u"~/Library/Application Support/Skerry/qv-hook"_s);
    struct stat there = {};
    EXPECT_EQ(stat((name + "/.claude/settings.json").constData(), &there), 0);
    qputenv("HOME", before);
    // The temporary folder can't name it.
    QDir(odd.home()).removeRecursively();
    rmdir(name.constData());
}

} // namespace
} // namespace tirlo
