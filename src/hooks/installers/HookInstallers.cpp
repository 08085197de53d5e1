#include "HookInstallers.h"

namespace tirlo {

HookInstallers::HookInstallers(const Paths &paths, const MainQueue &clock)
    : claude(paths, clock)
    , gemini(ListedHooks::gemini(paths, clock))
    , antigravity(paths, clock)
    , codex(ListedHooks::codex(paths, clock))
{
}

bool HookInstallers::hooksInstalled(const QString &pillId) const
{
    const std::pair<QLatin1String, const HookInstaller *> agents[]{
        {QLatin1String("integration_claude"), &claude},
        {QLatin1String("agent_gemini"), &gemini},
        {QLatin1String("agent_antigravity"), &antigravity},
        {QLatin1String("agent_codex"), &codex},
    };
    for (const auto &[id, installer] : agents) {
        if (id == pillId)
            return installer->hooksInstalled();
    }
    return false;
}

} // namespace tirlo
