#include "InstallerFixture.h"

#include <sys/stat.h>

namespace tirlo {
namespace {

struct GuardedHooksTest : InstallerFixture
{
    /// Previews and confirms; what fails is returned as its message.
    static std::string apply(GuardedHooks &installer, bool install)
    {
        return messageOf([&] {
            static_cast<void>(installer.previewHooks(install));
            installer.writeHooks();
        });
    }

    static QByteArray withoutBlanks(QByteArray text)
    {
        return text.replace(' ', "").replace('\n', "");
    }
};

TEST_F(GuardedHooksTest, EachAgentGetsItsOwnDialect)
{
    const struct
    {
        GuardedHooks &installer;
        QString path;
        int events;
        QByteArray start;
        QByteArray end;
    } rows[] = {
        {gemini, geminiPath, 7, R"({"hooks":{"AfterAgent")",
         R"(geminiStop","timeout":5000,"type":"command"}],"matcher":"*"}])"},
        {antigravity, antigravityPath, 5, R"({"tirlo":{"PostInvocation")",
         R"(antigravityPostInvocation","timeout":10,"type":"command"}]}])"},
        {codex, codexPath, 10, R"("PermissionRequest")",
         R"x(codex","statusMessage":"Waitingforyouranswerinthenotch(Tirlo)","timeout":120,)x"
         R"("type":"command"}]}])"},
    };
    for (const auto &[installer, path, events, start, end] : rows) {
        EXPECT_EQ(apply(installer, true), "");
        EXPECT_TRUE(installer.hooksInstalled());
        EXPECT_EQ(besides(path).filter(".bak-"), QStringList());
        const QByteArray written = withoutBlanks(contents(path));
        EXPECT_EQ(written.count("/qv-hook"), events);
        EXPECT_TRUE(written.contains(start + R"(:[{"hooks":[{"command":"/bin/sh\"/)")) << events;
        EXPECT_TRUE(written.contains(R"(/qv-hook\"--agent)" + end)) << written.toStdString();
    }
}

TEST_F(GuardedHooksTest, WhatIsNotUnderstoodIsNotTouched)
{
    const std::string label = "~/.codex/hooks.json";
    const std::pair<QByteArray, std::string> rows[]{
        {"", " is not valid JSON"},
        {"[]", " is not valid JSON"},
        {R"({"hooks": null})", R"(: "hooks" has an unexpected type)"},
        {R"({"hooks": {"Stop": "x"}})", R"(: "hooks"["Stop"] has an unexpected type)"},
        {R"({"hooks": {"Stop": [{}, []]}})", R"(: "hooks"["Stop"] has an unexpected type)"},
    };
    for (const auto &[bytes, complaint] : rows) {
        writeFile(codexPath, bytes);
        const std::string message = label + complaint + " — Tirlo has not touched it.";
        EXPECT_EQ(apply(codex, true), message);
        EXPECT_FALSE(codex.hooksInstalled());
        // A removal passes over lists that it doesn't understand.
        EXPECT_EQ(messageOf([&] { static_cast<void>(codex.previewHooks(false)); }),
                  bytes.contains("Stop") ? "" : message);
        EXPECT_EQ(contents(codexPath), bytes);
    }
    QFile::remove(codexPath);
    EXPECT_EQ(besides(codexPath), QStringList());
    ASSERT_EQ(mkfifo(QFile::encodeName(codexPath), 0600), 0);
    EXPECT_EQ(apply(codex, true), label + " cannot be read — Tirlo has not touched it.");
}

TEST_F(GuardedHooksTest, ForeignEntriesSurviveInstallationAndRemoval)
{
    writeFile(geminiPath, R"({"hooks": {"Alien": [{"command": "/old/qv-hook --agent gemini"}]}})");
    EXPECT_TRUE(gemini.hooksInstalled()) << "an entry without a group counts too";
    writeFile(geminiPath, R"({
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
    EXPECT_TRUE(gemini.hooksInstalled());
    EXPECT_EQ(apply(gemini, true), "");
    EXPECT_EQ(json(contents(geminiPath))["hooks"]["BeforeTool"].toArray().size(), 3);

    queue.advance(1);
    EXPECT_EQ(apply(gemini, false), "");
    EXPECT_EQ(withoutBlanks(contents(geminiPath)),
              R"({"big":18446744073709551617,"hooks":{"BeforeTool":[{"hooks":[)"
              R"({"command":"foreign"},{"command":5}],"note":1.0},{"hooks":"odd"}],)"
              R"("Odd":{"a":"qv-hook"}}})");
    EXPECT_FALSE(gemini.hooksInstalled());

    writeFile(antigravityPath, R"({"tirlo": {"mine": 1}, "hooks": 3})");
    EXPECT_FALSE(antigravity.hooksInstalled());
    EXPECT_EQ(apply(antigravity, true), "");
    EXPECT_EQ(json(contents(antigravityPath))["tirlo"].toObject().size(), 5);
    queue.advance(1);
    EXPECT_EQ(apply(antigravity, false), "");
    EXPECT_EQ(contents(antigravityPath), "{\n  \"hooks\": 3\n}");
}

TEST_F(GuardedHooksTest, OnlyWhatWasPreviewedLastIsWrittenAndNeverWithoutABackup)
{
    const QByteArray mine = R"({"mine": 1})";
    writeFile(codexPath, mine);
    ASSERT_TRUE(QDir().mkpath(codexPath + ".bak-20260314-092653"));
    EXPECT_EQ(apply(codex, true),
              "Could not back up hooks.json.bak-20260314-092653: there is one already");
    EXPECT_EQ(contents(codexPath), mine);
    // The change is still there to be confirmed, once.
    queue.advance(1);
    for (const QByteArray &present : {mine, QByteArray("{}")}) {
        writeFile(codexPath, present);
        codex.writeHooks();
        EXPECT_EQ(codex.hooksInstalled(), present == mine);
    }

    static_cast<void>(codex.previewHooks(true));
    QFile::remove(codexPath);
    EXPECT_EQ(messageOf([this] { codex.writeHooks(); }),
              "~/.codex/hooks.json changed since preview. Refresh and try again.");
    EXPECT_FALSE(QFileInfo::exists(codexPath));
    // A preview that fails leaves nothing of the one before it.
    writeFile(codexPath, "{");
    EXPECT_NE(messageOf([this] { static_cast<void>(codex.previewHooks(true)); }), "");
    codex.writeHooks();
    EXPECT_EQ(contents(codexPath), "{");
}

} // namespace
} // namespace tirlo
