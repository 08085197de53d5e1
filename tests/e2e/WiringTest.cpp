#include "kit/Desktop.h"
#include "kit/Program.h"
#include "kit/TrayHost.h"
#include "kit/TrayItem.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>

#include <gtest/gtest.h>

#include <memory>
#include <optional>

using namespace tirlo::e2e;

namespace {

/// The real program, whose settings are opened from the tray.
class WiringTest : public testing::Test
{
protected:
    void SetUp() override
    {
        movePointer(20, 700);
        ASSERT_TRUE(tray.isReady());
        program.emplace(TIRLO_PROGRAM);
        ASSERT_TRUE(program->isReady());
        ASSERT_TRUE(waitUntil([&] { return tray.items().size() == 1; }));
        const TrayItem item(tray, tray.items().first());
        for (const TrayRow &row : item.menu()) {
            if (row.properties.value("label") == "Settings…")
                item.choose(row);
        }
        ASSERT_TRUE(program->waitForText("Claude Code Hooks"));
    }

    /// Clicks the button of the settings, wherever it is in them.
    bool clickInSettings(const char *name) const
    {
        if (!program->waitForButton(name))
            return false;
        scrollTo(name);
        return program->clickButton(name);
    }

    /// Turns the wheel over the settings until the button, if it is one of theirs, is in sight.
    void scrollTo(const char *name) const
    {
        constexpr int turns = 40;
        for (int turn = 0; turn < turns; ++turn) {
            const auto window = findNode(program->processId(), "filler", "Settings — Tirlo");
            const auto target = program->button(name);
            if (!window || !target || target->y < window->y)
                return;
            if (target->y + 2 * target->height < window->y + window->height)
                return;
            // On the bare margin, where no control takes the wheel for its own.
            movePointer(window->x + 4, window->y + window->height / 2);
            QProcess::execute("xdotool", {"click", "5"});
        }
    }

    QByteArray claudeSettings() const
    {
        QFile file(program->home() + "/.claude/settings.json");
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

    /// Runs the command line that the settings have for the event, as the agent does.
    std::unique_ptr<QProcess> runHook(const char *event, QJsonObject payload) const
    {
        const QJsonValue settings(QJsonDocument::fromJson(claudeSettings()).object());
        const QString command
            = settings["hooks"][QLatin1String(event)][0]["hooks"][0]["command"].toString();
        payload.insert("hook_event_name", event);
        payload.insert("session_id", "session-1");
        payload.insert("cwd", "/src/lighthouse");
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert("HOME", program->home());
        environment.insert("TERM_PROGRAM", "vscode");
        auto agent = std::make_unique<QProcess>();
        agent->setProcessEnvironment(environment);
        agent->start("/bin/sh", {"-c", command});
        agent->write(QJsonDocument(payload).toJson(QJsonDocument::Compact));
        agent->closeWriteChannel();
        return agent;
    }

    TrayHost tray;
    std::optional<Program> program;
};

TEST_F(WiringTest, WhatTheSettingsInstallBringsAgentsToTheIsland)
{
    ASSERT_TRUE(clickInSettings("Install hooks"));
    ASSERT_TRUE(program->waitForText("Review the JSON below before confirming."));
    EXPECT_EQ(claudeSettings(), "") << "nothing is written before it was read";
    ASSERT_TRUE(clickInSettings("Confirm & write"));
    ASSERT_TRUE(program->waitForText("✓ Hooks installed in ~/.claude/settings.json"));

    const auto start = runHook("SessionStart", {});
    ASSERT_TRUE(start->waitForFinished());
    EXPECT_EQ(start->exitCode(), 0);
    const auto request
        = runHook("PermissionRequest",
                  {{"tool_name", "Bash"}, {"tool_input", QJsonObject{{"command", "make"}}}});
    ASSERT_TRUE(program->waitForText("needs permission"));
    EXPECT_TRUE(program->shows("lighthouse"));
    EXPECT_EQ(request->state(), QProcess::Running);
    ASSERT_TRUE(program->clickButton("Allow"));
    ASSERT_TRUE(request->waitForFinished());
    EXPECT_TRUE(request->readAll().contains(R"("behavior":"allow")"));
}

} // namespace
