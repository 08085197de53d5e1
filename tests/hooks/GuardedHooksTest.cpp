#include "InstallerFixture.h"

#include <sys/stat.h>

namespace tirlo {
namespace {

struct GuardedHooksTest : InstallerFixture
{
    struct Agent
    {
        GuardedHooks &installer;
        QString path;
        std::string label;
        std::string name;
        QString pill;
        /// An event of ours.
        std::string event;
    };

    /// Previews and confirms; what fails is returned as its message.
    static std::string apply(const Agent &agent, bool install)
    {
        return messageOf([&] {
            static_cast<void>(agent.installer.previewHooks(install));
            agent.installer.writeHooks();
        });
    }

    const std::vector<Agent> agents{
        {installers.gemini, paths.geminiSettingsPath(), "~/.gemini/settings.json", "Gemini CLI",
         u"agent_gemini"_s, "AfterTool"},
        {installers.antigravity, paths.antigravityHooksPath(), "~/.gemini/config/hooks.json",
         "Antigravity", u"agent_antigravity"_s, "Stop"},
        {installers.codex, paths.codexHooksPath(), "~/.codex/hooks.json", "Codex", u"agent_codex"_s,
         "Stop"}};
};

TEST_F(GuardedHooksTest, EachAgentGetsItsOwnDialect)
{
    // Event, what follows the script in the command, time-out, matcher, message.
    const auto rows = [this](const Agent &agent, QLatin1String block) {
        QString lines;
        EXPECT_EQ(apply(agent, false), "No " + agent.name + " hooks to remove.");
        EXPECT_EQ(apply(agent, true), "");
        const QByteArray written = bytesOf(agent.path);
        const QJsonObject events = json(written)[block].toObject();
        for (auto event = events.begin(); event != events.end(); ++event) {
            const QJsonObject group = (*event)[0].toObject();
            QJsonObject entry = group["hooks"][0].toObject();
            const QString command = entry.take("command").toString();
            EXPECT_TRUE(command.startsWith("/bin/sh \"")) << command.toStdString();
            EXPECT_EQ(entry.take("type").toString(), "command");
            lines += QStringList({event.key(), command.section("/qv-hook\" ", 1),
                                  QString::number(entry.take("timeout").toInt()),
                                  group["matcher"].toString(),
                                  entry.take("statusMessage").toString()})
                         .join(u'|')
                + u'\n';
            EXPECT_TRUE(entry.isEmpty());
        }
        EXPECT_TRUE(installers.hooksInstalled(agent.pill));
        EXPECT_TRUE(written.contains(R"("/bin/sh \")")) << "slashes stand as they are";
        EXPECT_FALSE(besides(agent.path).join(u' ').contains(".bak-"));
        // A second confirmation has nothing left to write.
        put(agent.path, "{}");
        EXPECT_EQ(messageOf([&] { agent.installer.writeHooks(); }), "");
        EXPECT_EQ(bytesOf(agent.path), "{}");
        EXPECT_FALSE(installers.hooksInstalled(agent.pill));
        return lines.toStdString();
    };
    EXPECT_EQ(rows(agents[0], QLatin1String("hooks")),
              R"(AfterAgent|--agent gemini Stop|5000|*|
AfterTool|--agent gemini PostToolUse|5000|*|
BeforeAgent|--agent gemini UserPromptSubmit|5000|*|
BeforeTool|--agent gemini PreToolUse|5000|*|
SessionEnd|--agent gemini SessionEnd|10000|*|
SessionStart|--agent gemini SessionStart|10000|*|
)");
    EXPECT_EQ(rows(agents[1], QLatin1String("tirlo")),
              R"(PostInvocation|--agent antigravity PostInvocation|10||
PostToolUse|--agent antigravity PostToolUse|10|*|
PreInvocation|--agent antigravity PreInvocation|10||
PreToolUse|--agent antigravity PreToolUse|10|*|
Stop|--agent antigravity Stop|10||
)");
    EXPECT_EQ(rows(agents[2], QLatin1String("hooks")),
              R"(Interrupt|--agent codex|3||
PermissionRequest|--agent codex|120||Waiting for your answer in the notch (Tirlo)
PostToolUse|--agent codex|10||
PreToolUse|--agent codex|10||
SessionEnd|--agent codex|3||
SessionStart|--agent codex|10||
Stop|--agent codex|10||
SubagentStart|--agent codex|10||
SubagentStop|--agent codex|10||
UserPromptSubmit|--agent codex|10||
)");
}

TEST_F(GuardedHooksTest, WhatIsNotUnderstoodIsNotTouched)
{
    struct Row
    {
        QByteArray bytes;
        std::string complaint;
        /// A removal passes over lists that it doesn't understand.
        bool isRemovable;
    };
    const Row rows[]{
        {"", " is not valid JSON", false},
        {"[]", " is not valid JSON", false},
        {R"({"hooks": null})", R"(: "hooks" has an unexpected type)", false},
        {R"({"hooks": {"Stop": "x", "AfterTool": "x"}})", "", true},
        {R"({"hooks": {"Stop": [{}, []], "AfterTool": [{}, []]}})", "", true},
    };
    for (const Agent &agent : {agents[0], agents[2]}) {
        for (const auto &[bytes, complaint, isRemovable] : rows) {
            put(agent.path, bytes);
            const std::string message = agent.label
                + (isRemovable ? ": \"hooks\"[\"" + agent.event + "\"] has an unexpected type"
                               : complaint)
                + " — Tirlo has not touched it.";
            EXPECT_EQ(apply(agent, true), message);
            EXPECT_FALSE(installers.hooksInstalled(agent.pill));
            EXPECT_EQ(messageOf([&] { static_cast<void>(agent.installer.previewHooks(false)); }),
                      isRemovable ? "" : message);
            EXPECT_EQ(bytesOf(agent.path), bytes);
        }
        QFile::remove(agent.path);
        EXPECT_FALSE(besides(agent.path).join(u' ').contains(".bak-"));
        ASSERT_EQ(mkfifo(QFile::encodeName(agent.path), 0600), 0);
        EXPECT_EQ(apply(agent, true), agent.label + " cannot be read — Tirlo has not touched it.");
    }
}

TEST_F(GuardedHooksTest, ForeignEntriesSurviveInstallationAndRemoval)
{
    const Agent &gemini = agents[0];
    put(gemini.path, R"({"hooks": {"Alien": [{"command": "/old/qv-hook --agent gemini"}]}})");
    EXPECT_TRUE(gemini.installer.hooksInstalled()) << "an entry without a group counts too";
    put(gemini.path, R"({
  "big": 18446744073709551617,
  "hooks": {
    "Alien": [{"command": "/old/qv-hook"}, {"hooks": [{"command": "sh /old/qv-hook --agent gemini"}]}],
    "BeforeTool": [
      {"hooks": [{"command": "x qv-hook y"}, {"command": "foreign"}, {"command": 5}], "note": 1.0},
      {"hooks": "odd"},
      {"hooks": [{"command": "qv-hook"}]}
    ],
    "Odd": {"a": "qv-hook"},
    "Void": []
  }
})");
    EXPECT_TRUE(gemini.installer.hooksInstalled());
    EXPECT_EQ(apply(gemini, true), "");
    EXPECT_EQ(json(bytesOf(gemini.path))["hooks"]["BeforeTool"].toArray().size(), 3);

    queue.advance(1);
    EXPECT_EQ(apply(gemini, false), "");
    QByteArray left = bytesOf(gemini.path);
    for (const char blank : {' ', '\n'})
        left.replace(blank, "");
    EXPECT_EQ(left,
              R"({"big":18446744073709551617,"hooks":{"BeforeTool":[{"hooks":[)"
              R"({"command":"foreign"},{"command":5}],"note":1.0},{"hooks":"odd"}],)"
              R"("Odd":{"a":"qv-hook"}}})");
    EXPECT_FALSE(gemini.installer.hooksInstalled());

    const Agent &antigravity = agents[1];
    put(antigravity.path, R"({"tirlo": {"mine": 1}, "hooks": 3})");
    EXPECT_FALSE(antigravity.installer.hooksInstalled());
    EXPECT_EQ(apply(antigravity, true), "");
    EXPECT_EQ(json(bytesOf(antigravity.path))["tirlo"].toObject().size(), 5);
    queue.advance(1);
    EXPECT_EQ(apply(antigravity, false), "");
    EXPECT_EQ(bytesOf(antigravity.path), "{\n  \"hooks\": 3\n}");
}

TEST_F(GuardedHooksTest, OnlyWhatWasPreviewedLastIsWritten)
{
    const Agent &codex = agents[2];
    put(codex.path, "{}");
    static_cast<void>(codex.installer.previewHooks(true));
    QFile::remove(codex.path);
    EXPECT_EQ(messageOf([&] { codex.installer.writeHooks(); }),
              codex.label + " changed since preview. Refresh and try again.");
    EXPECT_FALSE(QFileInfo::exists(codex.path));

    // A preview that fails leaves nothing of the one before it.
    put(codex.path, "{");
    EXPECT_NE(messageOf([&] { static_cast<void>(codex.installer.previewHooks(true)); }), "");
    codex.installer.writeHooks();
    EXPECT_EQ(bytesOf(codex.path), "{");
}

TEST_F(GuardedHooksTest, WithoutABackupNothingIsWritten)
{
    const Agent &codex = agents[2];
    put(codex.path, R"({"mine": 1})");
    ASSERT_TRUE(QDir().mkpath(codex.path + ".bak-20260314-092653"));
    EXPECT_EQ(apply(codex, true),
              "Could not back up hooks.json.bak-20260314-092653: there is one already");
    EXPECT_EQ(bytesOf(codex.path), R"({"mine": 1})");
    // The change is still there to be confirmed.
    queue.advance(1);
    codex.installer.writeHooks();
    EXPECT_TRUE(installers.hooksInstalled(codex.pill));
}

} // namespace
} // namespace tirlo
