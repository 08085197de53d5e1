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

    QJsonObject hooks() const { return json(contents(path))["hooks"].toObject(); }

    const QString &path = claudePath;
};

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
    writeFile(path, foreign);
    install();
    install();
    const QByteArray written = contents(path);
    EXPECT_TRUE(written.contains(R"("id": 12345678901234567890123,)"));
    EXPECT_TRUE(written.contains(R"("zeta": 1e2)"));
    EXPECT_EQ(json(written)["permissions"]["allow"][0].toString(), "Bash(ls:*)");
    EXPECT_EQ(hooks().size(), 2 + 13);
    const QJsonObject group = hooks()["PermissionRequest"][0].toObject();
    EXPECT_EQ(group.keys(), QStringList({"hooks"}));
    EXPECT_EQ(group["hooks"][0]["timeout"].toInt(), 120);
    EXPECT_TRUE(written.contains(R"(\/Library\/Application Support\/Skerry\/qv-hook\"")"));
    EXPECT_TRUE(written.contains(R"(\\\"my\\\")"));
    const QJsonArray stop = hooks()["Stop"].toArray();
    ASSERT_EQ(stop.size(), 3) << "two foreign groups and one of ours";
    EXPECT_EQ(stop[0]["hooks"][0]["command"].toString(), "say hi");
    EXPECT_EQ(stop[1]["hooks"].toString(), "odd");
    EXPECT_TRUE(stop[2]["hooks"][0]["command"].toString().endsWith("/qv-hook\""));

    claude.uninstallHooks();
    EXPECT_FALSE(claude.hooksInstalled());
    EXPECT_EQ(hooks().keys(), QStringList({"Odd", "Other", "Stop"}));
    EXPECT_EQ(besides(path).size(), 2) << "a removal makes no backup";
}

TEST_F(ClaudeHooksTest, WhatIsBrokenIsReplacedAndKeptAsABackup)
{
    const QByteArray broken[]{"{\"a\": 1,,}", "[1]", R"({"hooks": []})",
                              R"({"hooks": {"Stop": [{"hooks": []}, 3]}})"};
    for (const QByteArray &bytes : broken) {
        writeFile(path, bytes);
        claude.uninstallHooks();
        EXPECT_FALSE(claude.hooksInstalled());
        EXPECT_FALSE(claude.hooksNeedUpdate());
        EXPECT_EQ(contents(path), bytes);
        install();
        EXPECT_EQ(hooks()["Stop"].toArray().size(), 1) << bytes.toStdString();
        EXPECT_TRUE(claude.hooksInstalled());
        EXPECT_EQ(contents(path + ".bak-" + queue.wallClock().toString("yyyyMMdd-HHmm")), bytes);
        queue.advance(60);
    }
}

TEST_F(ClaudeHooksTest, NothingThatStoodInTheFileIsLostWithinAMinute)
{
    const std::pair<QByteArray, QString> backups[]{
        {"1", u"0926"_s}, {"2", u"092654"_s}, {"2", u"092655"_s}, {"3", u"092656"_s}};
    for (const auto &[mine, time] : backups) {
        static_cast<void>(claude.buildHooksData());
        writeFile(path, mine);
        claude.writeHooks();
        EXPECT_TRUE(claude.hooksInstalled());
        queue.advance(1);
    }
    for (const auto &[mine, time] : backups)
        EXPECT_EQ(contents(path + u".bak-20260314-"_s + time), mine);
    EXPECT_EQ(besides(path).size(), 4);
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
        writeFile(path, R"({"hooks":{"PermissionRequest":[{"hooks":[7,{)" + entry + "}]}]}}");
        EXPECT_EQ(claude.hooksNeedUpdate(), needsUpdate) << entry.toStdString();
    }
}

} // namespace
} // namespace tirlo
