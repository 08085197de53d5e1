#pragma once

#include "ClaudeHooks.h"
#include "GuardedHooks.h"

#include <memory>
#include <vector>

namespace tirlo {

/// The installers of all agents that Tirlo can wire.
class HookInstallers
{
public:
    /// Installers for the files under the home directory of `paths`; the clock outlives them.
    HookInstallers(const Paths &paths, const MainQueue &clock);

    ClaudeHooks claude;
    /// Those of all other agents, in the order in which they are offered.
    std::vector<std::unique_ptr<GuardedHooks>> guarded;
};

} // namespace tirlo
