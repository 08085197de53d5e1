#include "ViewFixture.h"

namespace tirlo {

namespace {

constexpr const char *editor = "com.microsoft.VSCode";
constexpr const char *cursorEditor = "com.todesktop.230313mzl4w4u92";
constexpr const char *codexApplication = "com.openai.codex";

RunningApplication running(const char *bundleIdentifier)
{
    return {.processId = 7, .bundleIdentifier = QString::fromLatin1(bundleIdentifier), .name = {}};
}

/// Clicks the button beside the focused task's name.
class AgentTargetsTest : public ViewFixture
{
protected:
    AgentTargetsTest()
    {
        applications.alive = {running("net.kovidgoyal.kitty"), running("com.apple.Terminal")};
        for (const char *installed : {editor, cursorEditor, codexApplication})
            applications.installed.append(QString::fromLatin1(installed));
        open(IslandView::overview);
    }

    /// What the desktop was asked for when the task's target was opened; empty for nothing.
    QStringList targetOf(const QString &id, AgentSource source, const QString &buttonName)
    {
        AgentTask focused = task(id, QStringLiteral("shop"));
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
};

TEST_F(AgentTargetsTest, EachTaskHasItsTarget)
{
    using enum AgentSource;
    keychain.set(QStringLiteral("n8n-url"), QStringLiteral("https://flows.example.org/home"));
    struct Row
    {
        const char *id;
        AgentSource source;
        const char *buttonName;
        const char *expected;
    };
    const char *ownN8n = "https://flows.example.org/home";
    for (const auto &[id, source, buttonName, expected] : {
             Row{"integration_claude", claudeCode, "Open VS Code", editor},
             Row{"integration_resend", n8n, "Open Resend", "https://resend.com/emails"},
             Row{"integration_vercel", n8n, "Open Vercel", "https://vercel.com/dashboard"},
             Row{"integration_github", n8n, "Open GitHub", "https://github.com"},
             Row{"integration_n8n", n8n, "Open n8n", ownN8n},
             Row{"integration_stripe", n8n, "Open Stripe", "https://dashboard.stripe.com/payments"},
             Row{"integration_notion", n8n, "Open Notion", "https://www.notion.so"},
             Row{"integration_calcom", n8n, "Open Cal.com", "https://app.cal.com/bookings"},
             Row{"agent_cursor", agent, "Open Cursor", cursorEditor},
             Row{"agent_codex", agent, "Open Codex", codexApplication},
             Row{"agent_gemini", agent, "Open terminal", "com.apple.Terminal"},
             Row{"agent_antigravity", agent, "Open terminal", "com.apple.Terminal"},
             Row{"ai_anthropic", n8n, "Chat with Anthropic", "anthropic"},
             Row{"ai_google", n8n, "Chat with Google AI", "google"},
             Row{"ai_openai", n8n, "Chat with OpenAI", "openai"},
             Row{"flow_7", n8n, "Open n8n", ownN8n},
             Row{"agent_shop", agent, "Open terminal", "com.apple.Terminal"},
         })
        EXPECT_EQ(targetOf(QString::fromLatin1(id), source, QString::fromLatin1(buttonName)),
                  QStringList{QString::fromLatin1(expected)})
            << id;
}

TEST_F(AgentTargetsTest, AMissingTargetIsPassedOverInSilence)
{
    using enum AgentSource;
    applications.alive.clear();
    applications.installed.clear();
    const QString terminal = QStringLiteral("Open terminal");
    EXPECT_TRUE(
        targetOf(QStringLiteral("agent_codex"), agent, QStringLiteral("Open Codex")).isEmpty());
    EXPECT_TRUE(targetOf(QStringLiteral("agent_shop"), agent, terminal).isEmpty())
        << "no terminal is started";
    keychain.set(QStringLiteral("n8n-url"), QStringLiteral("file:///etc/passwd"));
    EXPECT_TRUE(
        targetOf(QStringLiteral("integration_n8n"), n8n, QStringLiteral("Open n8n")).isEmpty());
    EXPECT_EQ(state.view.value(), IslandView::overview);

    setTasks({});
    EXPECT_FALSE(button(terminal)) << "without a task there is nothing to open";
}

} // namespace

} // namespace tirlo
