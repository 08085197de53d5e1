#include "ProviderSwitch.h"

#include "core/AppState.h"
#include "core/IslandIntents.h"
#include "core/Notifications.h"
#include "core/SoundEngine.h"

namespace tirlo {

void switchChatProvider(ChatProvider provider, AppState &state, Notifications &notifications,
                        IslandIntents &island, SoundEngine &sounds)
{
    if (state.chatProvider != provider) {
        state.chatProvider = provider;
        Q_EMIT notifications.triggerEmote(BotEmote::surprised);
        sounds.play(QStringLiteral("pop"));
    }
    island.show(IslandView::prompt);
}

} // namespace tirlo
