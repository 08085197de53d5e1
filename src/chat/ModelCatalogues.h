#pragma once

#include "ProviderHosts.h"
#include "core/model/Chat.h"
#include "core/model/ChatProvider.h"
#include "platform/BackgroundWorker.h"
#include "platform/HttpClient.h"

#include <QList>
#include <QObject>

#include <functional>

namespace tirlo {

class AppState;
class KeychainStore;
class MainQueue;

/// Fetches each provider's list of chat models into the store, once per run and only when asked.
class ModelCatalogues
{
public:
    using Fetched = std::function<void(const QList<ProviderModel> &)>;

    ModelCatalogues(AppState &state, const KeychainStore &keychain, HttpClient &http,
                    MainQueue &queue, ProviderHosts hosts);

    /// Fetches the provider's list unless it is there or on its way, once the keys are at hand.
    ///
    /// A chosen model that is not in it gives way to one that is.
    void fetchModelsIfNeeded(ChatProvider provider);

    // Each hands over a provider's models, none after any failure.
    void fetchModels(const QString &apiKey, const Fetched &done);
    void fetchGoogleModels(const QString &apiKey, const Fetched &done);
    void fetchOpenAIModels(const QString &apiKey, const Fetched &done);

private:
    using Read = QList<ProviderModel> (*)(const HttpReply &);

    void fetchWithKey(ChatProvider provider);
    /// Sends the request and hands over what `read` makes of the reply, in the background if long.
    void ask(const HttpRequest &request, Read read, const Fetched &done);
    void fetch(ChatProvider provider, const QString &apiKey, const Fetched &done);
    void take(ChatProvider provider, const QList<ProviderModel> &models);
    void setError(ChatProvider provider, const QString &error);

    AppState &m_state;
    const KeychainStore &m_keychain;
    HttpClient &m_http;
    MainQueue &m_queue;
    const ProviderHosts m_hosts;
    QObject m_owner;
    BackgroundWorker m_worker;
};

} // namespace tirlo
