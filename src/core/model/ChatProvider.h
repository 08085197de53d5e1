#pragma once

#include "RawText.h"

namespace tirlo {

/// The chat's backend.
enum class ChatProvider { anthropic, google, openai };

template<>
struct RawTexts<ChatProvider>
{
    static constexpr std::array texts{
        QLatin1String("anthropic"),
        QLatin1String("google"),
        QLatin1String("openai"),
    };
};

/// The author of a chat message.
enum class ChatRole { user, assistant };

} // namespace tirlo
