#include "hooks/HookRouting.h"
#include "HookFixture.h"

namespace tirlo {
namespace {

TEST(HookRouting, FirstMatchingSourceWins)
{
    const struct
    {
        const char *payload;
        const char *pill;
        bool isExternal;
        const char *project = "Session";
        const char *session = "unknown";
    } rows[] = {
        {R"({"tirlo_agent":"codex","bundle_id":"com.todesktop.230313mzl4w4u92"})", "agent_codex",
         false},
        {R"({"tirlo_agent":"gemini","term_program":"vscode"})", "agent_gemini", true},
        {R"({"tirlo_agent":"claude","term_program":"vscode"})", "integration_claude", false},
        {R"({"tirlo_agent":"Gemini","term_program":"xterm"})", "", false},
        {R"({"bundle_id":"com.ToDesktop.230313mzl4w4u92","term_program":"vscode"})", "agent_cursor",
         false},
        {R"({"bundle_id":"com.microsoft.VSCode"})", "integration_claude", false},
        {R"({"term_program":"My-VSCode-Fork"})", "integration_claude", false},
        {R"({"term_program":"iTerm.app","bundle_id":"com.googlecode.iterm2"})", "", false},
        {R"({"tirlo_agent":["codex"],"term_program":{"a":"vscode"},"bundle_id":1})", "", false},
        {R"({"session_id":3,"conversation_id":"c","cwd":"/home/me/Orra Hub/"})", "", false,
         "Orra Hub", "c"},
        {R"({"conversation_id":null,"cwd":"/w/Skerry_App"})", "", false, "Skerry App"},
    };
    for (const auto &row : rows) {
        const HookOrigin origin = HookOrigin::of(json(row.payload));
        EXPECT_EQ(origin.projectName, QLatin1String(row.project)) << row.payload;
        EXPECT_EQ(origin.sessionId, QLatin1String(row.session)) << row.payload;
        const auto route = routeOf(origin);
        EXPECT_EQ(route ? route->pillId : QString(), QLatin1String(row.pill)) << row.payload;
        EXPECT_EQ(route && route->isExternal(), row.isExternal) << row.payload;
    }
}

TEST(HookRouting, TellsTheEditorsApartByWhatTheRelaySaw)
{
    const struct
    {
        const char *facts;
        const char *pill;
    } rows[] = {
        {R"({"tirlo_programs":["/opt/claude","/usr/bin/bash","/usr/share/code/code"]})",
         "integration_claude"},
        {R"({"tirlo_programs":["/opt/node","/tmp/.mount_CursorXa/usr/share/cursor/cursor"],
             "term_program":"vscode"})",
         "agent_cursor"},
        {R"({"tirlo_programs":["/opt/claude","/home/a/.cursor-server/bin/x/node"]})",
         "agent_cursor"},
        // The nearest of two, whatever was handed down by the farther one.
        {R"({"tirlo_programs":["/opt/claude","/usr/share/code/code","/opt/cursor/cursor"],
             "tirlo_host":{"CURSOR_TRACE_ID":"1"}})",
         "integration_claude"},
        // Within a tmux there is nobody above.
        {R"({"tirlo_programs":["/opt/claude","/usr/bin/tmux"],"term_program":"tmux",
             "tirlo_host":{"VSCODE_GIT_ASKPASS_NODE":"/usr/share/code/code"}})",
         "integration_claude"},
        {R"({"tirlo_programs":["/opt/claude","/usr/bin/tmux"],"term_program":"vscode",
             "tirlo_host":{"VSCODE_GIT_ASKPASS_NODE":"/usr/share/cursor/cursor"}})",
         "agent_cursor"},
        {R"({"tirlo_host":{"VSCODE_PID":"1","VSCODE_IPC_HOOK":"/h/.config/Cursor/1-main.sock"}})",
         "agent_cursor"},
        {R"({"tirlo_host":{"CLAUDE_CODE_ENTRYPOINT":"claude-vscode"}})", "integration_claude"},
        {R"({"tirlo_host":{"CHROME_DESKTOP":"opencode.desktop","CLAUDE_CODE_ENTRYPOINT":"cli"}})",
         ""},
        {R"({"tirlo_programs":["/opt/claude","/usr/bin/xterm"],"tirlo_host":{}})", ""},
        {R"({"tirlo_programs":[1,["code"],"opencode","code-agent","/code/"]})", ""},
        // What the agent's host says of itself comes first.
        {R"({"bundle_id":"com.microsoft.VSCode","tirlo_programs":["cursor"]})",
         "integration_claude"},
    };
    for (const auto &row : rows) {
        const HookOrigin origin = HookOrigin::of(json(row.facts));
        const auto route = routeOf(origin);
        EXPECT_EQ(route ? route->pillId : QString(), QLatin1String(row.pill)) << row.facts;
    }

    const auto processIn
        = [](const char *payload) { return HookOrigin::of(json(payload)).process; };
    EXPECT_EQ(processIn(R"({"tirlo_process":{"pid":7,"start":99,"space":"pid:[1]"}})"),
              (ProcessId{7, 99, u"pid:[1]"_s}));
    EXPECT_EQ(processIn(R"({"tirlo_process":{"pid":"7","start":1}})"), std::nullopt);

    // A plain terminal is taken in on demand, and is not said to be an editor.
    const auto taken = routeOf(HookOrigin::of(json(R"({"term_program":"xterm"})")), true);
    ASSERT_TRUE(taken);
    EXPECT_EQ(taken->pillId, u"integration_claude"_s);
    EXPECT_EQ(taken->place, u"the terminal"_s);
}

TEST(HookRouting, AcceptsFitAgentNamesOnly)
{
    for (const char *fit : {"a", "gemini", "my-agent-2", "abcdefghijklmnopqrstuvwx"})
        EXPECT_EQ(validateAgent(QLatin1String(fit)), QLatin1String(fit));
    for (const char *unfit :
         {"", "claude", "Gemini", "a b", "a_b", "é", "../x", "a\n", "abcdefghijklmnopqrstuvwxy"})
        EXPECT_FALSE(validateAgent(QString::fromUtf8(unfit))) << unfit;
}

} // namespace
} // namespace tirlo
