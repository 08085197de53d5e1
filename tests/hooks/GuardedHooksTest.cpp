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
        QString pill;
    };

    /// Previews and confirms; what fails is returned as its message.
    static std::string apply(const Agent &agent, bool install)
    {
        return messageOf([&] {
            static_cast<void>(agent.installer.previewHooks(install));
            agent.installer.writeHooks();
        });
    }

    static QByteArray withoutBlanks(QByteArray text)
    {
        return text.replace(' ', "").replace('\n', "");
    }

    const std::vector<Agent> agents{
        {installers.gemini, paths.geminiSettingsPath(), "~/.gemini/settings.json",
         u"agent_gemini"_s},
        {installers.antigravity, paths.antigravityHooksPath(), "~/.gemini/config/hooks.json",
         u"agent_antigravity"_s},
        {installers.codex, paths.codexHooksPath(), "~/.codex/hooks.json", u"agent_codex"_s}};
};

TEST_F(GuardedHooksTest, EachAgentGetsItsOwnDialect)
{
    const auto expectWritten
        = [this](const Agent &agent, int events, const QByteArray &start, const QByteArray &end) {
              EXPECT_EQ(apply(agent, true), "");
              EXPECT_TRUE(installers.hooksInstalled(agent.pill));
              EXPECT_EQ(besides(agent.path).filter(".bak-"), QStringList());
              const QByteArray written = withoutBlanks(bytesOf(agent.path));
              EXPECT_EQ(written.count("/qv-hook"), events);
              EXPECT_TRUE(written.contains(start + R"(:[{"hooks":[{"command":"/bin/sh\"/)"))
                  << written.toStdString();
              EXPECT_TRUE(written.contains(R"(/qv-hook\"--agent)" + end)) << written.toStdString();
          };
    expectWritten(agents[0], 6, R"({"hooks":{"AfterAgent")",
                  R"(geminiStop","timeout":5000,"type":"command"}],"matcher":"*"}])");
    expectWritten(agents[1], 5, R"({"tirlo":{"PostInvocation")",
                  R"(antigravityPostInvocation","timeout":10,"type":"command"}]}])");
    expectWritten(agents[2], 10, R"("PermissionRequest")",
                  R"x(codex","statusMessage":"Waitingforyouranswerinthenotch(Tirlo)",)x"
                  R"("timeout":120,"type":"command"}]}])");
}

TEST_F(GuardedHooksTest, WhatIsNotUnderstoodIsNotTouched)
{
    const Agent &codex = agents[2];
    const std::pair<QByteArray, std::string> rows[]{
        {"", " is not valid JSON"},
        {"[]", " is not valid JSON"},
        {R"({"hooks": null})", R"(: "hooks" has an unexpected type)"},
        {R"({"hooks": {"Stop": "x"}})", R"(: "hooks"["Stop"] has an unexpected type)"},
        {R"({"hooks": {"Stop": [{}, []]}})", R"(: "hooks"["Stop"] has an unexpected type)"},
    };
    for (const auto &[bytes, complaint] : rows) {
        put(codex.path, bytes);
        const std::string message = codex.label + complaint + " — Tirlo has not touched it.";
        EXPECT_EQ(apply(codex, true), message);
        EXPECT_FALSE(codex.installer.hooksInstalled());
        // A removal passes over lists that it doesn't understand.
        EXPECT_EQ(messageOf([&] { static_cast<void>(codex.installer.previewHooks(false)); }),
                  bytes.contains("Stop") ? "" : message);
        EXPECT_EQ(bytesOf(codex.path), bytes);
    }
    QFile::remove(codex.path);
    EXPECT_EQ(besides(codex.path), QStringList());
    ASSERT_EQ(mkfifo(QFile::encodeName(codex.path), 0600), 0);
    EXPECT_EQ(apply(codex, true), codex.label + " cannot be read — Tirlo has not touched it.");
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
    EXPECT_EQ(withoutBlanks(bytesOf(gemini.path)),
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
    // A second confirmation has nothing left to write.
    put(codex.path, "{}");
    codex.installer.writeHooks();
    EXPECT_EQ(bytesOf(codex.path), "{}");
}

} // namespace
} // namespace tirlo
