#pragma once

#include "core/model/ChatProvider.h"

namespace tirlo {

class AppState;
class IslandIntents;
class Notifications;
class SoundEngine;

/// Makes the provider the one to chat with and shows the prompt; the conversation goes on with it.
void switchChatProvider(ChatProvider provider, AppState &state, Notifications &notifications,
                        IslandIntents &island, SoundEngine &sounds);

} // namespace tirlo
