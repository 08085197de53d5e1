#pragma once

#include "ChatWire.h"
#include "ProviderHosts.h"
#include "Transcript.h"
#include "platform/BackgroundWorker.h"
#include "platform/HttpClient.h"

#include <QObject>

#include <functional>

namespace tirlo {

class AppState;
class IslandIntents;
class KeychainStore;
class MainQueue;
class Notifications;

/// Carries the user's questions to the chosen provider and its answers back into the store.
///
/// One conversation goes on for as long as the program runs, also over a change of provider. It
/// lives on the main thread; files are read, and messages written and read, in the background.
class ClaudeService
{
public:
    ClaudeService(AppState &state, Notifications &notifications, IslandIntents &island,
                  const KeychainStore &keychain, HttpClient &http, MainQueue &queue,
                  ProviderHosts hosts);

    /// Asks the provider, once the keys are at hand; what comes of it shows in the store.
    ///
    /// The context counts for the first question of the conversation only.
    void chat(const QString &query, const std::optional<PromptContext> &context);

private:
    void chatWithKey(const QString &query, const std::optional<PromptContext> &context);
    void chatOpenAICompatible(ChatProvider provider, const QString &query,
                              const std::optional<PromptContext> &context);
    [[nodiscard]] QString model() const;
    /// Makes the request, sends it and works out what came of the turn, without holding up anyone.
    void callAPI(quint64 turn, std::function<HttpRequest()> makeRequest,
                 const std::function<ChatOutcome(const HttpReply &)> &understand);
    void handleChatResult(quint64 turn, const ChatOutcome &outcome);
    void showError(const QString &message);

    AppState &m_state;
    Notifications &m_notifications;
    IslandIntents &m_island;
    const KeychainStore &m_keychain;
    HttpClient &m_http;
    MainQueue &m_queue;
    const ProviderHosts m_hosts;
    Transcript m_transcript;
    QObject m_owner;
    BackgroundWorker m_worker;
};

} // namespace tirlo
