#pragma once

#include "core/model/ApprovalAnswer.h"
#include "core/model/ChatProvider.h"

#include <functional>

namespace tirlo {

/// What the cards ask of the rest of the program, so that they need not know who does it.
struct IslandActions
{
    /// Answers the permission request on show.
    std::function<void(const ApprovalAnswer &answer)> sendApprovalDecision;
    /// Notes what the user was looking at, for the prompt; may be empty.
    std::function<void()> capturePromptContext = {};
    /// Chats with that provider from now on, and shows the prompt.
    std::function<void(ChatProvider provider)> switchChatProvider;
};

} // namespace tirlo
