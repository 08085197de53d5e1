#include "ProviderSwitch.h"

#include "core/AppState.h"
#include "core/Notifications.h"
#include "core/SoundEngine.h"

namespace tirlo {

void switchChatProvider(ChatProvider provider, AppState &state, Notifications &notifications,
                        SoundEngine &sounds)
{
    if (state.chatProvider != provider) {
        state.chatProvider = provider;
        Q_EMIT notifications.triggerEmote(BotEmote::surprised);
        sounds.play(QStringLiteral("pop"));
    }
    state.view = IslandView::prompt;
}

} // namespace tirlo
