#include "ViewFixture.h"

#include <tuple>

using namespace tirlo;

namespace {

/// Clicks the button beside the focused task's name.
class AgentTargetsTest : public ViewFixture
{
protected:
    AgentTargetsTest()
    {
        for (const char *running : {"net.kovidgoyal.kitty", "com.apple.Terminal"})
            applications.alive.push_back({.processId = 7, .bundleIdentifier = running, .name = {}});
        applications.installed = {editor, cursorEditor, codexApplication};
        open(IslandView::overview);
    }

    /// What the desktop was asked for when the task's target was opened; empty for nothing.
    QStringList targetOf(const QString &id, AgentSource source, const QString &buttonName)
    {
        AgentTask focused = task(id);
        focused.source = source;
        setTasks({focused});
        applications.activated.clear();
        applications.opened.clear();
        applications.pages.clear();
        providers.clear();
        click(buttonName);

        QStringList asked = applications.opened + applications.pages;
        for (const RunningApplication &application : applications.activated)
            asked.append(application.bundleIdentifier);
        for (const ChatProvider provider : providers)
            asked.append(rawText(provider));
        return asked;
    }

    static constexpr const char *editor = "com.microsoft.VSCode";
    static constexpr const char *cursorEditor = "com.todesktop.230313mzl4w4u92";
    static constexpr const char *codexApplication = "com.openai.codex";
};

TEST_F(AgentTargetsTest, EachKindOfTaskHasItsTarget)
{
    using enum AgentSource;
    const char *ownN8n = "https://flows.example.org/home";
    keychain.set("n8n-url", ownN8n);
    using Row = std::tuple<const char *, AgentSource, const char *, const char *>;
    for (const auto &[id, source, buttonName, expected] : {
             Row{"integration_claude", claudeCode, "Open VS Code", editor},
             Row{"integration_resend", n8n, "Open Resend", "https://resend.com/emails"},
             Row{"integration_n8n", n8n, "Open n8n", ownN8n},
             Row{"agent_cursor", agent, "Open Cursor", cursorEditor},
             Row{"agent_codex", agent, "Open Codex", codexApplication},
             Row{"agent_gemini", agent, "Open terminal", "com.apple.Terminal"},
             Row{"ai_google", n8n, "Chat with Google AI", "google"},
             Row{"flow_7", n8n, "Open n8n", ownN8n},
             Row{"agent_shop", agent, "Open terminal", "com.apple.Terminal"},
         })
        EXPECT_EQ(targetOf(id, source, buttonName), QStringList{expected}) << id;
}

TEST_F(AgentTargetsTest, AMissingTargetIsPassedOverInSilence)
{
    using enum AgentSource;
    applications.alive.clear();
    applications.installed.clear();
    keychain.set("n8n-url", "file:///etc/passwd");
    EXPECT_EQ(targetOf("agent_codex", agent, "Open Codex"), QStringList());
    EXPECT_EQ(targetOf("agent_shop", agent, "Open terminal"), QStringList())
        << "no terminal is started";
    EXPECT_EQ(targetOf("integration_n8n", n8n, "Open n8n"), QStringList());
    EXPECT_EQ(state.view.value(), IslandView::overview);

    setTasks({});
    EXPECT_FALSE(button("Open terminal")) << "without a task there is nothing to open";
}

} // namespace
