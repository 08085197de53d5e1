#pragma once

#include "chat/ClaudeService.h"
#include "core/KeychainStore.h"
#include "platform/linux/QtHttpClient.h"
#include "support/MemorySecretStore.h"
#include "support/ProviderStandIn.h"
#include "support/SpinUntil.h"
#include "support/StandInIsland.h"
#include "support/StoreParts.h"

#include <QJsonDocument>

#include <gtest/gtest.h>

#include <optional>

namespace tirlo {

/// The chat over the real network client, with the providers played on this machine.
class ChatFixture : public testing::Test, protected StoreParts
{
protected:
    ChatFixture()
    {
        keychain.load();
        QObject::connect(&notifications, &Notifications::triggerEmote, &notifications,
                         [this](BotEmote emote) { emotes.append(rawText(emote)); });
        for (const auto provider : allCases<ChatProvider>())
            keychain.set(rawText(provider) + "-api-key", providers.key);
    }

    template<typename Condition>
    [[nodiscard]] bool waitUntil(Condition condition)
    {
        return spinUntil([&] {
            queue.drain();
            return condition();
        });
    }

    /// Puts the question and waits for an answer or a note.
    void ask(const QString &query, const std::optional<PromptContext> &context = std::nullopt)
    {
        island.setView(IslandView::searching);
        state.noteMessage = std::nullopt;
        service->chat(query, context);
        ASSERT_TRUE(waitUntil([this] { return state.view != IslandView::searching; }));
    }

    [[nodiscard]] QString lastAnswer() const
    {
        return state.chatHistory.value().value(state.chatHistory.value().size() - 1).content;
    }

    /// The note on show; empty if an answer is on show instead.
    [[nodiscard]] QString note() const
    {
        const bool isShown
            = state.view == IslandView::note && state.stateOverride.value() == BotState::error;
        return isShown ? state.noteMessage.value().value_or(QString()) : QString();
    }

    [[nodiscard]] LoopbackServer &server(ChatProvider provider)
    {
        if (provider == ChatProvider::google)
            return providers.google;
        return provider == ChatProvider::openai ? providers.openai : providers.anthropic;
    }

    /// The messages of the last request to the provider, system prompt aside.
    [[nodiscard]] QJsonArray messages(ChatProvider provider)
    {
        QJsonArray messages = ProviderStandIn::lastBody(server(provider))["messages"].toArray();
        if (!messages.isEmpty() && messages.first()["role"] == "system")
            messages.removeFirst();
        return messages;
    }

    StandInIsland island{state};
    QStringList emotes;
    ProviderStandIn providers;
    MemorySecretStore secrets;
    KeychainStore keychain{secrets};
    QtHttpClient http{queue};
    const ProviderHosts hosts{providers.anthropic.url(), providers.google.url(),
                              providers.openai.url()};
    std::optional<ClaudeService> service{std::in_place, state, notifications, island,
                                         keychain,      http,  queue,         hosts};
};

inline QJsonValue json(const QByteArray &text)
{
    return QJsonDocument::fromJson("[" + text + "]").array().at(0);
}

inline std::string str(const QJsonValue &value)
{
    return QJsonDocument(QJsonArray{value}).toJson().toStdString();
}

} // namespace tirlo
