#include "hooks/Peer.h"
#include "kit/Agent.h"
#include "kit/Program.h"

#include <QDir>
#include <QProcess>

#include <gtest/gtest.h>

#include <csignal>
#include <utility>

#include <unistd.h>

using namespace tirlo::e2e;
using tirlo::Peer;

namespace {

struct Ended
{
    int exitCode = -1;
    QByteArray errors;
    qint64 milliseconds = 0;
};

/// Runs the program, or the command, to its end in that home, with these further variables; an
/// empty one is taken out.
Ended runToEnd(const QString &home, QStringList command,
               const QMap<QString, QString> &variables = {})
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert("HOME", home);
    for (auto it = variables.begin(); it != variables.end(); ++it) {
        if (it.value().isEmpty())
            environment.remove(it.key());
        else
            environment.insert(it.key(), it.value());
    }
    QProcess process;
    process.setProcessEnvironment(environment);
    QElapsedTimer time;
    time.start();
    process.start(command.takeFirst(), command);
    if (!process.waitForFinished(20000))
        return {};
    EXPECT_EQ(process.exitStatus(), QProcess::NormalExit);
    return {process.exitCode(), process.readAllStandardError(), time.elapsed()};
}

Ended start(const QString &home, const QStringList &options = {})
{
    return runToEnd(home, QStringList{TIRLO_PROGRAM} + options);
}

void stopAndGoOn(pid_t process, const std::function<void()> &meanwhile)
{
    kill(process, SIGSTOP);
    meanwhile();
    kill(process, SIGCONT);
}

TEST(StartAndEndTest, CommandsReachTheProgramThatRunsHowever)
{
    movePointer(640, 700);
    Program program{TIRLO_PROGRAM};
    ASSERT_TRUE(program.isReady());
    ASSERT_TRUE(waitForWidth(openWidth));
    ASSERT_TRUE(waitForWidth(compactWidth, 15000));
    const auto tell = [&](const QStringList &options) {
        const Ended ended = start(program.home(), options);
        EXPECT_EQ(ended.exitCode, 0);
        EXPECT_EQ(ended.errors, "");
    };
    tell({"--open"});
    EXPECT_TRUE(waitForWidth(openWidth));
    tell({"--settings"});
    EXPECT_TRUE(program.waitForText("Claude Code Hooks"));
    EXPECT_TRUE(waitForWidth(compactWidth));
    // A later start finds the first one, by its socket too when somebody tidied the lock away.
    QFile::remove(program.supportFolder() + "/tirlo.lock");
    tell({});
    EXPECT_TRUE(waitForWidth(openWidth));
    EXPECT_EQ(Peer::connectedTo(program.supportFolder() + "/ui.sock").send("dance\n").receiveAll(),
              "unknown\n");
    EXPECT_TRUE(program.isRunning());

    tell({"--quit"});
    // What is left of the process waits to be collected.
    EXPECT_TRUE(waitUntil([&] { return !program.isRunning(); }, 100));
    EXPECT_FALSE(program.hasCrashed());
}

TEST(StartAndEndTest, ACommandThatCannotBeDoneIsOneLineAndAStatus)
{
    Program program{TIRLO_PROGRAM};
    ASSERT_TRUE(program.isReady());
    const auto expect = [](const Ended &run, int exitCode, const char *words) {
        EXPECT_EQ(run.exitCode, exitCode) << words;
        EXPECT_TRUE(run.errors.contains(words)) << run.errors.constData();
        EXPECT_EQ(run.errors.count('\n'), 1) << run.errors.constData();
        EXPECT_LT(run.milliseconds, 4000) << words;
    };
    stopAndGoOn(pid_t(program.processId()), [&] {
        for (const QStringList &options : {QStringList("--open"), QStringList()})
            expect(start(program.home(), options), 1, "does not answer");
    });
    if (getuid() == 0) {
        const QStringList asNobody{"setpriv", "--reuid=65534", "--clear-groups", TIRLO_PROGRAM};
        expect(runToEnd(program.home(), asNobody + QStringList("--open")), 1, "by the user");
        // Nor may one who gets at the folder.
        for (const char *folder : {"", "/Library", "/Library/Application Support",
                                   "/Library/Application Support/Skerry"})
            QFile::setPermissions(program.home() + folder, QFileDevice::Permissions(0x7777));
        QFile::setPermissions(program.supportFolder() + "/ui.sock",
                              QFileDevice::Permissions(0x6666));
        expect(runToEnd(program.home(), asNobody + QStringList("--quit")), 1, "by the user");
        EXPECT_TRUE(program.isRunning());
    }
    for (const QStringList &options : {QStringList("--dance"), QStringList("open"),
                                       QStringList{"--open", "--quit"}, QStringList("")})
        expect(start(program.home(), options), 2, "the options are");
    ASSERT_TRUE(program.stop());
    for (const char *option : {"--open", "--settings", "--quit"})
        expect(start(program.home(), {option}), 1, "not running");

    QMap<QString, QString> noDisplay{{"DISPLAY", ""}};
    expect(runToEnd(program.home(), {TIRLO_PROGRAM}, noDisplay), 1, "DISPLAY is not set");
    noDisplay["DISPLAY"] = ":4077";
    expect(runToEnd(program.home(), {TIRLO_PROGRAM}, noDisplay), 1, ":4077 can't be reached");
}

TEST(StartAndEndTest, TheEndIsInOrderAndAnIgnoredSignalIsNone)
{
    Program program{TIRLO_PROGRAM};
    ASSERT_TRUE(program.isReady());
    ASSERT_TRUE(program.stop()) << "by SIGTERM";
    EXPECT_TRUE(program.start()) << "the lock went with it";
    kill(pid_t(program.processId()), SIGKILL);
    ASSERT_TRUE(waitUntil([&] { return !program.isRunning(); }));
    EXPECT_TRUE(program.start()) << "however it went";
    ASSERT_TRUE(program.stop());

    std::signal(SIGHUP, SIG_IGN);
    EXPECT_TRUE(program.start());
    std::signal(SIGHUP, SIG_DFL);
    rest(1000);
    kill(pid_t(program.processId()), SIGHUP);
    rest(500);
    EXPECT_TRUE(program.isRunning()) << "nohup asks for that";
    EXPECT_TRUE(program.stop());
}

TEST(StartAndEndTest, WhatKeepsAgentsOutIsOnTheIslandUntilItIsMended)
{
    movePointer(640, 700);
    Program program{TIRLO_PROGRAM};
    ASSERT_TRUE(program.stop());
    QFile::remove(program.socketPath());
    ASSERT_TRUE(QDir().mkdir(program.socketPath()));
    EXPECT_FALSE(program.start());
    EXPECT_TRUE(program.waitForText("a folder is in the place of its socket."));
    ASSERT_TRUE(QDir().rmdir(program.socketPath()));
    EXPECT_TRUE(waitUntil([&] { return Peer::connectedTo(program.socketPath()).isConnected(); }));
    EXPECT_TRUE(program.waitForNoText("a folder is in the place of its socket."));
}

} // namespace
