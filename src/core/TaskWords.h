#pragma once

#include "model/AgentTask.h"

namespace tirlo {

/// The mood in words, such as "needs permission".
[[nodiscard]] QString inWords(BotState mood);

/// The task in words: its agent, its name and its mood, such as "Claude Code, shop, working".
[[nodiscard]] QString inWords(const AgentTask &task);

} // namespace tirlo
