#include "ModelCatalogues.h"

#include "AnthropicMessages.h"
#include "ModelLists.h"
#include "Providers.h"
#include "core/AppState.h"
#include "core/KeychainStore.h"

#include <algorithm>
#include <utility>

namespace tirlo {

namespace {

constexpr double timeout = 10;

/// What the name of the provider's usual model contains.
QLatin1String marker(ChatProvider provider)
{
    switch (provider) {
    case ChatProvider::google:
        return QLatin1String("flash");
    case ChatProvider::openai:
        return QLatin1String("mini");
    case ChatProvider::anthropic:
        break;
    }
    return QLatin1String("sonnet");
}

HttpRequest bearerRequest(const QUrl &url, const QString &apiKey)
{
    return {.url = url,
            .headers = {{"Authorization", "Bearer " + apiKey.toUtf8()}},
            .timeout = timeout};
}

} // namespace

ModelCatalogues::ModelCatalogues(AppState &state, const KeychainStore &keychain, HttpClient &http,
                                 MainQueue &queue, ProviderHosts hosts)
    : m_state(state)
    , m_keychain(keychain)
    , m_http(http)
    , m_queue(queue)
    , m_hosts(std::move(hosts))
{
}

void ModelCatalogues::fetchModelsIfNeeded(ChatProvider provider)
{
    m_keychain.whenLoaded(&m_owner, [this, provider] { fetchWithKey(provider); });
}

void ModelCatalogues::fetchWithKey(ChatProvider provider)
{
    QSet<ChatProvider> loading = m_state.loadingProviderModels;
    if (loading.contains(provider) || m_state.fetchedProviderModels.value().contains(provider))
        return;
    const QString key = m_keychain.get(providerKeyItem(provider)).value_or(QString());
    if (key.isEmpty()) {
        setError(provider, QStringLiteral("No API key — add it in Settings."));
        return;
    }

    loading.insert(provider);
    m_state.loadingProviderModels = loading;
    setError(provider, {});
    fetch(provider, key,
          [this, provider](const QList<ProviderModel> &models) { take(provider, models); });
}

void ModelCatalogues::fetchModels(const QString &apiKey, const Fetched &done)
{
    const HttpRequest request{
        .url = onHost(m_hosts.anthropic, QLatin1String("/v1/models?limit=100")),
        .headers
        = {{"x-api-key", apiKey.toUtf8()}, {"anthropic-version", AnthropicMessages::version}},
        .timeout = timeout};
    ask(request, ModelLists::anthropicModels, done);
}

void ModelCatalogues::fetchGoogleModels(const QString &apiKey, const Fetched &done)
{
    const QUrl url = onHost(m_hosts.google, QLatin1String("/v1beta/openai/models"));
    ask(bearerRequest(url, apiKey), ModelLists::googleModels, done);
}

void ModelCatalogues::fetchOpenAIModels(const QString &apiKey, const Fetched &done)
{
    const QUrl url = onHost(m_hosts.openai, QLatin1String("/v1/models"));
    ask(bearerRequest(url, apiKey), ModelLists::openAIModels, done);
}

void ModelCatalogues::ask(const HttpRequest &request, Read read, const Fetched &done)
{
    m_http.send(request, &m_owner, [=, this](const HttpReply &reply) {
        m_worker.postIfLong(
            m_queue, &m_owner, reply.body.size(), [=] { return read(reply); }, done);
    });
}

void ModelCatalogues::fetch(ChatProvider provider, const QString &apiKey, const Fetched &done)
{
    switch (provider) {
    case ChatProvider::anthropic:
        fetchModels(apiKey, done);
        return;
    case ChatProvider::google:
        fetchGoogleModels(apiKey, done);
        return;
    case ChatProvider::openai:
        fetchOpenAIModels(apiKey, done);
        return;
    }
}

void ModelCatalogues::take(ChatProvider provider, const QList<ProviderModel> &models)
{
    QSet<ChatProvider> loading = m_state.loadingProviderModels;
    loading.remove(provider);
    m_state.loadingProviderModels = loading;
    if (models.isEmpty()) {
        setError(provider, QStringLiteral("Failed to load models. Check your API key."));
        return;
    }
    QMap<ChatProvider, QList<ProviderModel>> fetched = m_state.fetchedProviderModels;
    fetched.insert(provider, models);
    m_state.fetchedProviderModels = fetched;

    QProperty<QString> &chosen = chosenModel(m_state, provider);
    if (std::ranges::find(models, chosen.value(), &ProviderModel::id) != models.end())
        return;
    const auto usual = std::ranges::find_if(models, [provider](const ProviderModel &model) {
        return model.id.contains(marker(provider));
    });
    chosen = usual == models.end() ? models.first().id : usual->id;
}

void ModelCatalogues::setError(ChatProvider provider, const QString &error)
{
    QMap<ChatProvider, QString> errors = m_state.providerModelFetchError;
    if (error.isEmpty())
        errors.remove(provider);
    else
        errors.insert(provider, error);
    m_state.providerModelFetchError = errors;
}

} // namespace tirlo
