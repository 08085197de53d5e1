#include "InstallerFixture.h"

#include <sys/stat.h>

#include <cstdio>

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
        /// An event of ours, under "hooks" unless the agent has a block of our own.
        QString event;
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
         u"agent_gemini"_s, u"BeforeTool"_s},
        {installers.antigravity,
         paths.antigravityHooksPath(),
         "~/.gemini/config/hooks.json",
         "Antigravity",
         u"agent_antigravity"_s,
         {}},
        {installers.codex, paths.codexHooksPath(), "~/.codex/hooks.json", "Codex", u"agent_codex"_s,
         u"Interrupt"_s}};
};

TEST_F(GuardedHooksTest, InstallsIntoNothingAndLeavesNothingOfIt)
{
    for (const Agent &agent : agents) {
        EXPECT_EQ(apply(agent, false), "No " + agent.name + " hooks to remove.");
        const QString preview = agent.installer.previewHooks(true);
        EXPECT_FALSE(QFileInfo::exists(agent.path));
        EXPECT_FALSE(installers.hooksInstalled(agent.pill));
        agent.installer.writeHooks();
        EXPECT_EQ(bytesOf(agent.path), preview.toUtf8());
        EXPECT_TRUE(installers.hooksInstalled(agent.pill));
        EXPECT_FALSE(besides(agent.path).join(u' ').contains(".bak-"));
        EXPECT_TRUE(preview.contains(R"("/bin/sh \")")) << "slashes stand as they are";

        // A second confirmation has nothing left to write.
        put(agent.path, "{}");
        EXPECT_EQ(messageOf([&] { agent.installer.writeHooks(); }), "");
        EXPECT_EQ(bytesOf(agent.path), "{}");

        EXPECT_EQ(apply(agent, true), "");
        queue.advance(1);
        EXPECT_EQ(apply(agent, false), "");
        EXPECT_EQ(bytesOf(agent.path), "{}");
        EXPECT_FALSE(installers.hooksInstalled(agent.pill));
        queue.advance(1);
    }
    EXPECT_FALSE(installers.hooksInstalled(u"integration_claude"_s));
    EXPECT_FALSE(installers.hooksInstalled(u"agent_cursor"_s));
}

TEST_F(GuardedHooksTest, EachAgentGetsItsOwnDialect)
{
    // Event, what follows the script in the command, time-out, matcher, message.
    const auto rows = [](const Agent &agent, QLatin1String block) {
        QString lines;
        const QJsonObject events
            = json(agent.installer.previewHooks(true).toUtf8())[block].toObject();
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
    for (const Agent &agent : agents) {
        std::vector<std::pair<QByteArray, std::string>> files{{"", " is not valid JSON"},
                                                              {"{,}", " is not valid JSON"},
                                                              {"[]", " is not valid JSON"}};
        if (!agent.event.isEmpty()) {
            for (const QByteArray type : {"null", "true", "3", "\"x\"", "[]"})
                files.push_back(
                    {"{\"hooks\": " + type + "}", ": \"hooks\" has an unexpected type"});
            for (const QByteArray type : {"null", "\"x\"", "{}", "[1]", "[{}, []]"})
                files.push_back(
                    {"{\"hooks\": {\"" + agent.event.toUtf8() + "\": " + type + "}}",
                     ": \"hooks\"[\"" + agent.event.toStdString() + "\"] has an unexpected type"});
        }
        for (const auto &[bytes, complaint] : files) {
            put(agent.path, bytes);
            EXPECT_EQ(apply(agent, true), agent.label + complaint + " — Tirlo has not touched it.");
            EXPECT_FALSE(installers.hooksInstalled(agent.pill));
            // A removal passes over lists that it doesn't understand.
            if (complaint.find("][") == std::string::npos
                && complaint.find("[\"") == std::string::npos) {
                EXPECT_EQ(apply(agent, false),
                          agent.label + complaint + " — Tirlo has not touched it.");
            }
            EXPECT_EQ(bytesOf(agent.path), bytes);
        }
        QFile::remove(agent.path);
        EXPECT_FALSE(besides(agent.path).join(u' ').contains(".bak-"));

        for (const bool isPipe : {false, true}) {
            const QByteArray native = QFile::encodeName(agent.path);
            ASSERT_EQ(isPipe ? mkfifo(native, 0600) : mkdir(native, 0700), 0);
            EXPECT_EQ(apply(agent, true),
                      agent.label + " cannot be read — Tirlo has not touched it.");
            ASSERT_EQ(std::remove(native), 0);
        }
    }
}

TEST_F(GuardedHooksTest, ForeignEntriesSurviveInstallationAndRemoval)
{
    const Agent &gemini = agents[0];
    put(gemini.path, R"({
  "big": 18446744073709551617,
  "hooks": {
    "Alien": [{"command": "/old/qv-hook"}, {"hooks": [{"command": "sh /old/qv-hook --agent gemini"}]}],
    "BeforeTool": [
      {"command": "/old/qv-hook flat"},
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
    const QJsonArray before = json(bytesOf(gemini.path))["hooks"]["BeforeTool"].toArray();
    EXPECT_EQ(before.size(), 3);
    EXPECT_EQ(before[2]["matcher"].toString(), "*");

    queue.advance(1);
    EXPECT_EQ(apply(gemini, false), "");
    EXPECT_EQ(bytesOf(gemini.path), R"({
  "big": 18446744073709551617,
  "hooks": {
    "BeforeTool": [
      {
        "hooks": [
          {
            "command": "foreign"
          },
          {
            "command": 5
          }
        ],
        "note": 1.0
      },
      {
        "hooks": "odd"
      }
    ],
    "Odd": {
      "a": "qv-hook"
    }
  }
})");
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

TEST_F(GuardedHooksTest, AnEditSinceThePreviewIsKept)
{
    const Agent &codex = agents[2];
    const std::string changed = codex.label + " changed since preview. Refresh and try again.";
    static_cast<void>(codex.installer.previewHooks(true));
    put(codex.path, R"({"mine": 1})");
    for (int attempt = 0; attempt < 2; ++attempt)
        EXPECT_EQ(messageOf([&] { codex.installer.writeHooks(); }), changed);
    EXPECT_EQ(bytesOf(codex.path), R"({"mine": 1})");

    static_cast<void>(codex.installer.previewHooks(true));
    QFile::remove(codex.path);
    EXPECT_EQ(messageOf([&] { codex.installer.writeHooks(); }), changed);
    EXPECT_FALSE(QFileInfo::exists(codex.path));

    // A preview that fails leaves nothing of the one before it.
    put(codex.path, "{");
    EXPECT_NE(messageOf([&] { static_cast<void>(codex.installer.previewHooks(true)); }), "");
    codex.installer.writeHooks();
    EXPECT_EQ(bytesOf(codex.path), "{");
    put(codex.path, R"({"mine": 2})");
    EXPECT_EQ(apply(codex, true), "");
    EXPECT_EQ(besides(codex.path), QStringList({"hooks.json.bak-20260314-092653"}));
    EXPECT_EQ(bytesOf(codex.path + ".bak-20260314-092653"), R"({"mine": 2})");
}

TEST_F(GuardedHooksTest, WithoutABackupNothingIsWritten)
{
    for (const Agent &agent : agents) {
        put(agent.path, R"({"mine": 1})");
        const QString backup = agent.path + ".bak-" + queue.wallClock().toString("yyyyMMdd-HHmmss");
        ASSERT_TRUE(QDir().mkpath(backup));
        const std::string message = apply(agent, true);
        EXPECT_TRUE(message.starts_with("Could not back up "
                                        + QFileInfo(backup).fileName().toStdString() + ": "))
            << message;
        EXPECT_EQ(bytesOf(agent.path), R"({"mine": 1})");
        // The change is still there to be confirmed.
        queue.advance(1);
        agent.installer.writeHooks();
        EXPECT_TRUE(installers.hooksInstalled(agent.pill));
    }
}

} // namespace
} // namespace tirlo
