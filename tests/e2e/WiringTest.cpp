#include "kit/Agent.h"
#include "kit/Program.h"
#include "kit/TrayHost.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>

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
        program.emplace(TIRLO_PROGRAM);
        ASSERT_TRUE(program->isReady());
        ASSERT_TRUE(tray.waitForItem());
        EXPECT_TRUE(tray.properties().contains("IconPixmap"));
        for (const TrayRow &row : tray.menu()) {
            if (row.properties.value("label") == "Settings…")
                tray.choose(row);
        }
        ASSERT_TRUE(program->waitForText("Claude Code Hooks"));
    }

    /// Clicks the button of the settings, once the wheel has brought it into sight.
    bool clickInSettings(const char *name) const
    {
        if (!program->waitForButton(name))
            return false;
        for (int turn = 0; turn < 40; ++turn) {
            const auto window = findNode(program->processId(), "filler", "Settings — Tirlo");
            const auto target = program->button(name);
            if (!window || !target || target->place.top() < window->place.top()
                || target->place.bottom() + target->place.height() < window->place.bottom())
                break;
            // On the bare margin, where no control takes the wheel for its own.
            movePointer(window->place.left() + 4, window->place.center().y());
            QProcess::execute("xdotool", {"click", "5"});
        }
        return program->clickButton(name);
    }

    QByteArray claudeSettings() const
    {
        QFile file(program->home() + "/.claude/settings.json");
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

    /// Runs the command line that the settings have for the event, as the agent does.
    std::unique_ptr<HookRun> runHook(const char *event, QJsonObject payload) const
    {
        const QJsonValue settings(QJsonDocument::fromJson(claudeSettings()).object());
        const QString command
            = settings["hooks"][QLatin1String(event)][0]["hooks"][0]["command"].toString();
        payload.insert("hook_event_name", event);
        payload.insert("cwd", "/src/lighthouse");
        return std::make_unique<HookRun>(program->home(), "/bin/sh", QStringList{"-c", command},
                                         "vscode", payload);
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
    ASSERT_TRUE(start->waitForEnd());
    EXPECT_EQ(start->exitCode(), 0);
    const auto request
        = runHook("PermissionRequest",
                  {{"tool_name", "Bash"}, {"tool_input", QJsonObject{{"command", "make"}}}});
    ASSERT_TRUE(program->waitForText("needs permission"));
    EXPECT_TRUE(program->shows("lighthouse"));
    EXPECT_TRUE(request->isRunning());
    ASSERT_TRUE(program->clickButton("Allow"));
    ASSERT_TRUE(request->waitForEnd());
    EXPECT_TRUE(request->output().contains(R"("behavior":"allow")"));
}

} // namespace
