#include "InstallerFixture.h"

namespace tirlo {
namespace {

struct ClaudeHooksTest : InstallerFixture
{
    void install()
    {
        static_cast<void>(claude.buildHooksData());
        claude.writeHooks();
    }

    QJsonObject hooks() const { return json(bytesOf(path))["hooks"].toObject(); }

    ClaudeHooks &claude = installers.claude;
    const QString path = paths.claudeSettingsPath();
};

TEST_F(ClaudeHooksTest, TheFirstInstallationMakesFolderAndFile)
{
    const QByteArray preview = claude.buildHooksData();
    EXPECT_FALSE(QFileInfo::exists(path)) << "only a confirmation writes";
    EXPECT_FALSE(claude.hooksInstalled());
    claude.writeHooks();
    EXPECT_EQ(bytesOf(path), preview);
    EXPECT_TRUE(claude.hooksInstalled());
    EXPECT_EQ(besides(path), QStringList());

    EXPECT_EQ(hooks().size(), 12);
    for (const QString &event : hooks().keys()) {
        const QJsonArray groups = hooks()[event].toArray();
        ASSERT_EQ(groups.size(), 1);
        const int timeout = event == u"PermissionRequest" ? 120 : 10;
        EXPECT_EQ(groups[0].toObject().keys(), QStringList({"hooks"}));
        EXPECT_EQ(groups[0]["hooks"][0]["timeout"].toInt(), timeout) << event.toStdString();
        EXPECT_EQ(groups[0]["hooks"][0]["type"].toString(), "command");
    }
    EXPECT_TRUE(preview.contains(R"(\/Library\/Application Support\/Skerry\/qv-hook\"")"));
    EXPECT_TRUE(preview.contains(R"(\\\"my\\\")")) << preview.toStdString();
}

TEST_F(ClaudeHooksTest, ForeignSettingsStayAsTheyAre)
{
    const QByteArray foreign = R"x({"zeta":1e2,"permissions":{"allow":["Bash(ls:*)"]},
        "id":12345678901234567890123,
        "hooks":{
            "Stop":[
                {"hooks":[{"type":"command","command":"say hi"}]},
                {"matcher":"*","hooks":[{"command":"/opt/Skerry/x"},{"command":"its neighbour"}]},
                {"hooks":"odd"}],
            "Other":[{"hooks":[]}],
            "Odd":7}})x";
    put(path, foreign);
    install();
    install();
    const QByteArray written = bytesOf(path);
    EXPECT_TRUE(written.contains(R"("id": 12345678901234567890123,)"));
    EXPECT_TRUE(written.contains(R"("zeta": 1e2)"));
    EXPECT_EQ(json(written)["permissions"]["allow"][0].toString(), "Bash(ls:*)");
    const QJsonArray stop = hooks()["Stop"].toArray();
    ASSERT_EQ(stop.size(), 3) << "two foreign groups and one of ours";
    EXPECT_EQ(stop[0]["hooks"][0]["command"].toString(), "say hi");
    EXPECT_EQ(stop[1]["hooks"].toString(), "odd");
    EXPECT_TRUE(stop[2]["hooks"][0]["command"].toString().endsWith("/qv-hook\""));

    // Both writes fell into the same minute: the first backup, of the user's own file, is kept.
    EXPECT_EQ(besides(path), QStringList({"settings.json.bak-20260314-0926"}));
    EXPECT_EQ(bytesOf(path + ".bak-20260314-0926"), foreign);

    claude.uninstallHooks();
    EXPECT_FALSE(claude.hooksInstalled());
    EXPECT_EQ(hooks().keys(), QStringList({"Odd", "Other", "Stop"}));
    EXPECT_EQ(hooks()["Stop"].toArray().size(), 2);
    EXPECT_EQ(besides(path).size(), 1) << "a removal makes no backup";
}

TEST_F(ClaudeHooksTest, WhatIsBrokenIsReplacedAndKeptAsABackup)
{
    const QByteArray broken[]{"",
                              "{\"a\": 1,,}",
                              "[1]",
                              R"({"hooks": null})",
                              R"({"hooks": []})",
                              R"({"hooks": "x"})",
                              R"({"hooks": 5})",
                              R"({"hooks": {"Stop": "x"}})",
                              R"({"hooks": {"Stop": [{"hooks": []}, 3]}})"};
    for (const QByteArray &bytes : broken) {
        put(path, bytes);
        claude.uninstallHooks();
        EXPECT_FALSE(claude.hooksInstalled());
        EXPECT_FALSE(claude.hooksNeedUpdate());
        EXPECT_EQ(bytesOf(path), bytes);
        install();
        EXPECT_EQ(hooks()["Stop"].toArray().size(), 1) << bytes.toStdString();
        EXPECT_TRUE(claude.hooksInstalled());
        EXPECT_EQ(bytesOf(path + ".bak-" + queue.wallClock().toString("yyyyMMdd-HHmm")), bytes);
        queue.advance(60);
    }
}

TEST_F(ClaudeHooksTest, AConfirmationWritesOnce)
{
    claude.writeHooks();
    EXPECT_FALSE(QFileInfo::exists(path)) << "nothing was previewed";
    install();
    put(path, "{}");
    claude.writeHooks();
    EXPECT_EQ(bytesOf(path), "{}");
    static_cast<void>(claude.buildHooksData());
    claude.cancel();
    claude.writeHooks();
    EXPECT_EQ(bytesOf(path), "{}");
}

TEST_F(ClaudeHooksTest, AnEditSinceThePreviewIsKeptAsABackup)
{
    put(path, R"({"mine": 1})");
    static_cast<void>(claude.buildHooksData());
    put(path, R"({"mine": 2})");
    claude.writeHooks();
    EXPECT_TRUE(claude.hooksInstalled());
    EXPECT_EQ(bytesOf(path + ".bak-20260314-0926"), R"({"mine": 2})");
}

TEST_F(ClaudeHooksTest, AnInstallationThatGivesUpEarlyWantsAnUpdate)
{
    const std::pair<QByteArray, bool> entries[]{
        {R"("command":"\"/x/Skerry/qv-hook\"","timeout":60)", true},
        {R"("command":"/opt/tirlo/qv-hook","timeout":119)", true},
        {R"("command":"/x/Skerry/qv-hook","timeout":120)", false},
        {R"("command":"/x/Skerry/qv-hook","timeout":"60")", false},
        {R"("command":"/x/Skerry/qv-hook","timeout":true)", false},
        {R"("command":"/x/Skerry/qv-hook")", false},
        {R"("command":"say hi","timeout":5)", false},
    };
    for (const auto &[entry, needsUpdate] : entries) {
        put(path, R"({"hooks":{"PermissionRequest":[{"hooks":[7,{)" + entry + "}]}]}}");
        EXPECT_EQ(claude.hooksNeedUpdate(), needsUpdate) << entry.toStdString();
    }
    put(path, R"({"hooks":{"PermissionRequest":[{"hooks":[{)" + entries[0].first + "}]}]}}");
    install();
    EXPECT_FALSE(claude.hooksNeedUpdate());
    EXPECT_EQ(hooks()["PermissionRequest"].toArray().size(), 1);
}

} // namespace
} // namespace tirlo
