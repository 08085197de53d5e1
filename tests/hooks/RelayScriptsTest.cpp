#include "hooks/RelayScripts.h"
#include "HookFixture.h"
#include "hooks/HookServer.h"

#include <QProcess>

namespace tirlo {
namespace {

/// The scripts as they are installed and as agents start them.
struct RelayScriptsTest : HookFixture
{
    RelayScriptsTest() { RelayScripts::installHookScript(paths); }

    void start(QProcess &relay, const QStringList &arguments, const QByteArray &payload)
    {
        QProcessEnvironment environment;
        environment.insert(u"HOME"_s, home.path());
        environment.insert(u"TERM_PROGRAM"_s, u"vscode"_s);
        environment.insert(u"PYTHONPATH"_s, u"."_s);
        relay.setProcessEnvironment(environment);
        relay.setWorkingDirectory(home.path());
        relay.start(paths.hookScriptPath(), arguments);
        relay.write(payload);
        relay.closeWriteChannel();
    }

    /// Runs a relay to its end; the result is its standard output.
    QByteArray run(const QStringList &arguments, const QByteArray &payload)
    {
        QProcess relay;
        start(relay, arguments, payload);
        EXPECT_TRUE(relay.waitForFinished());
        EXPECT_EQ(relay.exitStatus(), QProcess::NormalExit);
        EXPECT_EQ(relay.exitCode(), 0);
        EXPECT_EQ(relay.readAllStandardError(), "");
        return relay.readAllStandardOutput();
    }

    const QStringList gemini{u"--agent"_s, u"gemini"_s};
    const QByteArray permissionRequest = R"({"hook_event_name":"PermissionRequest","cwd":"/w"})";
};

TEST_F(RelayScriptsTest, WhatTheRelayMakesOfHooksAndAnswers)
{
    QProcess test;
    test.setProcessChannelMode(QProcess::MergedChannels);
    test.start(u"/usr/bin/python3"_s,
               {u"-B"_s, QStringLiteral(TIRLO_RELAY_TEST), paths.relayScriptPath()});
    ASSERT_TRUE(test.waitForFinished());
    EXPECT_EQ(test.exitCode(), 0) << test.readAll().constData();
}

TEST_F(RelayScriptsTest, WithoutAProgramThatListensTheAgentGoesOn)
{
    // Code in the folder where it runs stays unused.
    for (const QString &module : {u"sitecustomize.py"_s, u"json.py"_s}) {
        QFile file(home.filePath(module));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write("open('it-ran', 'w')\n");
    }
    EXPECT_EQ(run({}, permissionRequest), "");
    EXPECT_EQ(run(gemini, R"({"hook_event_name":"Stop"})"), "{}\n");
    EXPECT_FALSE(QFile::exists(home.filePath(u"it-ran"_s)));
}

TEST_F(RelayScriptsTest, WrapperFindsTheRelayHoweverItIsCalled)
{
    for (const QString &name : {u"./qv-hook"_s, u"qv-hook"_s}) {
        QProcess relay;
        relay.setWorkingDirectory(paths.supportFolder());
        relay.start(u"/bin/sh"_s, QStringList(name) + gemini);
        relay.write("{}");
        relay.closeWriteChannel();
        ASSERT_TRUE(relay.waitForFinished());
        EXPECT_EQ(relay.readAllStandardOutput(), "{}\n");
    }
}

TEST_F(RelayScriptsTest, KillingTheWrapperAloneSettlesTheRequest)
{
    HookServer server(context, paths);
    server.start();
    QProcess relay;
    start(relay, {}, permissionRequest);
    ASSERT_TRUE(eventually([&] { return state.pendingApproval.value().has_value(); }));
    relay.kill();
    ASSERT_TRUE(eventually([&] { return !state.pendingApproval.value(); }));
    EXPECT_EQ(state.noteMessage.value(), u"Handled in VS Code."_s);
    EXPECT_TRUE(eventually([&] { return relay.state() == QProcess::NotRunning; }));
}

} // namespace
} // namespace tirlo
