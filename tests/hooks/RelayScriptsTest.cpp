#include "hooks/RelayScripts.h"
#include "HookFixture.h"
#include "Peer.h"
#include "hooks/HookServer.h"
#include "hooks/SocketLine.h"

#include <QDir>
#include <QFileInfo>
#include <QProcess>

#include <thread>

namespace tirlo {
namespace {

struct RelayScriptsTest : HookFixture
{
    RelayScriptsTest() { RelayScripts::installHookScript(paths); }

    /// A relay as an agent starts it, with the hook's payload written to it.
    void start(QProcess &relay, const QStringList &arguments, const QByteArray &payload)
    {
        QProcessEnvironment environment;
        environment.insert(u"HOME"_s, home.path());
        environment.insert(u"TERM_PROGRAM"_s, u"vscode"_s);
        environment.insert(u"__CFBundleIdentifier"_s, u"org.host"_s);
        environment.insert(u"GEMINI_SESSION_ID"_s, u"env"_s);
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

    /// The same beside a server that answers with `reply`; the line it got is in `line`.
    QByteArray runServed(const QStringList &arguments, const QByteArray &payload,
                         const QByteArray &reply = {})
    {
        line.clear();
        QFile::remove(paths.socketPath());
        const sockaddr_un address = Peer::address(paths.socketPath());
        FileDescriptor listener(socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0));
        EXPECT_EQ(
            bind(listener.get(), reinterpret_cast<const sockaddr *>(&address), sizeof address), 0);
        EXPECT_EQ(listen(listener.get(), 1), 0);
        std::thread server([&] {
            const FileDescriptor connection(accept(listener.get(), nullptr, nullptr));
            line = receiveLine(connection.get());
            if (!reply.isEmpty())
                sendLine(connection.get(), reply);
        });
        const QByteArray output = run(arguments, payload);
        shutdown(listener.get(), SHUT_RDWR);
        server.join();
        return output;
    }

    QByteArray line;
};

const QStringList none;
const QStringList codex{u"--agent"_s, u"codex"_s};
const QStringList gemini{u"--agent"_s, u"gemini"_s};
const QByteArray permissionRequest = R"({"hook_event_name":"PermissionRequest","cwd":"/w",
    "permission_suggestions":[{"type":"addRules"}]})";

TEST_F(RelayScriptsTest, InstallsExecutablesOverWhatIsThere)
{
    const std::pair<QString, QByteArray> scripts[]{
        {paths.hookScriptPath(), RelayScripts::wrapper()},
        {paths.relayScriptPath(), RelayScripts::relay()}};
    for (const auto &[path, script] : scripts) {
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::ReadWrite | QIODevice::Truncate));
        file.write("#!/bin/false\n");
        file.setPermissions(QFileDevice::ReadOwner | QFileDevice::WriteOwner);
        file.close();
        RelayScripts::installHookScript(paths);
        ASSERT_TRUE(file.open(QIODevice::ReadOnly));
        EXPECT_EQ(file.readAll(), script);
        EXPECT_EQ(QFileInfo(path).permissions(), QFileDevice::Permissions(0x7755));
    }
    EXPECT_EQ(QDir(paths.supportFolder()).entryList(QDir::Files).size(), 2);
}

TEST_F(RelayScriptsTest, CodecAgreesWithThePublicOne)
{
    QProcess check;
    check.start(u"/usr/bin/python3"_s,
                {QStringLiteral(TIRLO_CODEC_CHECK), paths.relayScriptPath()});
    ASSERT_TRUE(check.waitForFinished());
    EXPECT_EQ(check.exitCode(), 0) << check.readAll().constData();
}

TEST_F(RelayScriptsTest, PassesTheCanonicalLineOn)
{
    const auto expectLine = [this](const QStringList &arguments, const char *payload,
                                   const char *members, const char *output = "") {
        EXPECT_EQ(runServed(arguments, payload), output) << payload;
        const QJsonObject got = json(line.constData());
        const QJsonObject expected = json(members);
        EXPECT_FALSE(got.isEmpty()) << payload;
        for (auto it = expected.begin(); it != expected.end(); ++it)
            EXPECT_EQ(got.value(it.key()), it.value()) << payload;
    };
    expectLine(codex, R"({"hook_event_name":"PreToolUse","tool_name":"x"})",
               R"({"tirlo_agent":"codex","hook_event_name":"PreToolUse","tool_name":"x",
                   "term_program":"vscode","bundle_id":"org.host","iterm_session_id":"",
                   "term_session_id":""})");
    expectLine({u"--agent"_s, u"antigravity"_s, u"PreInvocation"_s, u"exit"_s}, "{}",
               R"({"tirlo_agent":"antigravity","hook_event_name":"UserPromptSubmit"})", "{}\n");
    expectLine(gemini,
               R"({"hook_event_name":"AfterAgent","tirlo_agent":"mine","term_program":null})",
               R"({"tirlo_agent":"mine","hook_event_name":"Stop","term_program":null})", "{}\n");
    expectLine({u"--agent"_s}, R"({"hook_event_name":""})", R"({"hook_event_name":"--agent"})");
    expectLine(
        none, R"({"toolCall":{"name":"run","args":{"CommandLine":"ls","Path":2,"path":3}}})",
        R"({"tool_name":"run","tool_input":{"CommandLine":"ls","command":"ls","Path":2,"path":2}})");
    expectLine(none, R"({"tool":"t","conversationId":"","sessionId":"s","GEMINI_SESSION_ID":"g"})",
               R"({"tool_name":"t","session_id":"s"})");
    expectLine(none,
               R"({"tool_name":"t","sessionId":"s","workspacePaths":[],"workspace_roots":["/r"]})",
               R"({"cwd":"/r"})");
    expectLine(none, R"({"hook_event_name":"Stop"})", R"({"session_id":"env"})");
    expectLine(none, R"({"a":"é\ud800\u0000","n":123456789012345678901234567890})", "{}");
    EXPECT_TRUE(line.contains(R"("a":"\u00e9\ud800\u0000","n":123456789012345678901234567890)"));
    EXPECT_EQ(json(line.constData()).value(u"cwd"_s).toString(), home.path());

    // A payload with a tool's name is in the common dialect: its session is not looked for.
    runServed(gemini, R"({"tool_name":"t","sessionId":"s"})");
    EXPECT_FALSE(json(line.constData()).contains(u"session_id"_s));
}

TEST_F(RelayScriptsTest, TranslatesTheDecision)
{
    const QByteArray head
        = R"({"hookSpecificOutput":{"hookEventName":"PermissionRequest","decision":)";
    const QByteArray always = R"({"permissionDecision":"always"})";
    EXPECT_EQ(runServed(codex, permissionRequest, always),
              head + R"({"behavior":"allow"}}})" + "\n");
    EXPECT_EQ(runServed(none,
                        R"({"hook_event_name":"PermissionRequest","permission_suggestions":"x"})",
                        always),
              head + R"({"behavior":"allow","updatedPermissions":[]}}})" + "\n");
    for (const char *reply :
         {R"({"permissionDecision":"ask"})", R"({"permissionDecision":["allow"]})", "\xff", ""})
        EXPECT_EQ(runServed(gemini, permissionRequest, reply), "") << reply;
}

TEST_F(RelayScriptsTest, HostileInputNeverFailsTheAgent)
{
    EXPECT_EQ(run(none, permissionRequest), "") << "nobody listens";
    EXPECT_EQ(run(gemini, R"({"hook_event_name":"Stop"})"), "{}\n");

    const QByteArray rows[] = {
        "", "{} {}", "\xef\xbb\xbf{}", "{\"a\":\"\xff\"}", QByteArray(100000, '['), "[]", "null"};
    for (const QByteArray &row : rows) {
        EXPECT_EQ(runServed(none, row), "") << row.left(40).constData();
        EXPECT_EQ(line, "") << row.left(40).constData();
    }

    for (const char *value : {"null", "true", "7", "[]", "[[1]]", "{\"a\":{}}"}) {
        QByteArray payload = "{";
        for (const char *key : {"tirlo_agent", "term_program", "cwd", "workspacePaths", "toolCall",
                                "hook_event_name", "tool", "session_id", "conversationId"})
            payload += QByteArray("\"") + key + "\":" + value + ",";
        payload.chop(1);
        EXPECT_EQ(runServed(gemini, payload + "}"), "{}\n");
        EXPECT_NE(line, "") << value;
    }
}

TEST_F(RelayScriptsTest, CodeInTheFolderWhereItRunsStaysUnused)
{
    for (const QString &module : {u"sitecustomize.py"_s, u"json.py"_s}) {
        QFile file(home.filePath(module));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write("open('it-ran', 'w')\n");
    }
    EXPECT_EQ(runServed(gemini, "{}"), "{}\n");
    EXPECT_NE(line, "");
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
    start(relay, none, permissionRequest);
    ASSERT_TRUE(eventually([&] { return state.pendingApproval.value().has_value(); }));
    relay.kill();
    ASSERT_TRUE(eventually([&] { return !state.pendingApproval.value(); }));
    EXPECT_EQ(state.noteMessage.value(), u"Handled in VS Code."_s);
    EXPECT_TRUE(eventually([&] { return relay.state() == QProcess::NotRunning; }));
}

} // namespace
} // namespace tirlo
