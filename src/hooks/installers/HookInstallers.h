#pragma once

#include "BlockHooks.h"
#include "ClaudeHooks.h"
#include "ListedHooks.h"

namespace tirlo {

/// The installers of all agents that Tirlo can wire.
class HookInstallers
{
public:
    /// Installers for the files under the home directory of `paths`; the clock outlives them.
    HookInstallers(const Paths &paths, const MainQueue &clock);

    /// Whether the hooks are installed for the agent whose pill this is, such as "agent_codex".
    ///
    /// Reads the agent's file anew; false for a pill without hooks.
    [[nodiscard]] bool hooksInstalled(const QString &pillId) const;

    ClaudeHooks claude;
    ListedHooks gemini;
    BlockHooks antigravity;
    ListedHooks codex;
};

} // namespace tirlo
