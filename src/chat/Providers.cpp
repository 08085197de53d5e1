#include "Providers.h"

namespace tirlo {

QString providerKeyItem(ChatProvider provider)
{
    return rawText(provider) + QStringLiteral("-api-key");
}

QProperty<QString> &chosenModel(AppState &state, ChatProvider provider)
{
    switch (provider) {
    case ChatProvider::google:
        return state.googleChatModel;
    case ChatProvider::openai:
        return state.openAIChatModel;
    case ChatProvider::anthropic:
        break;
    }
    return state.claudeModel;
}

} // namespace tirlo
