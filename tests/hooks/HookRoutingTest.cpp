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
