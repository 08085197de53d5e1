#include "ClaudeService.h"

#include "AnthropicMessages.h"
#include "ChatCompletions.h"
#include "Providers.h"
#include "core/AppState.h"
#include "core/IslandIntents.h"
#include "core/KeychainStore.h"
#include "core/Notifications.h"
#include "core/Text.h"
#include "platform/MainQueue.h"

#include <utility>

namespace tirlo {

namespace {

/// Characters of an error that a note can show.
constexpr int longestError = 2000;

} // namespace

ClaudeService::ClaudeService(AppState &state, Notifications &notifications, IslandIntents &island,
                             const KeychainStore &keychain, HttpClient &http, MainQueue &queue,
                             ProviderHosts hosts)
    : m_state(state)
    , m_notifications(notifications)
    , m_island(island)
    , m_keychain(keychain)
    , m_http(http)
    , m_queue(queue)
    , m_hosts(std::move(hosts))
{
}

void ClaudeService::chat(const QString &query, const std::optional<PromptContext> &context)
{
    m_keychain.whenLoaded(&m_owner, [=, this] { chatWithKey(query, context); });
}

void ClaudeService::chatWithKey(const QString &query, const std::optional<PromptContext> &context)
{
    const ChatProvider provider = m_state.chatProvider;
    const auto first = m_transcript.isEmpty() ? context : std::nullopt;
    if (provider != ChatProvider::anthropic) {
        chatOpenAICompatible(provider, query, first);
        return;
    }
    const QString key = m_keychain.get(providerKeyItem(provider)).value_or(QString());
    if (key.isEmpty()) {
        showError(QStringLiteral("API key missing. Open settings."));
        return;
    }

    std::shared_ptr<AttachedFile> file;
    const auto *fileContext = first ? std::get_if<FileContext>(&*first) : nullptr;
    if (fileContext && fileContext->fileURL)
        file = std::make_shared<AttachedFile>(*fileContext->fileURL, m_worker.stopToken());
    const quint64 turn
        = m_transcript.append(ChatRole::user, AnthropicMessages::blocks(query, first), file);

    const auto makeRequest
        = [host = m_hosts.anthropic, key, model = model(), turns = m_transcript.turns()] {
              return AnthropicMessages::request(host, key, model, turns);
          };
    callAPI(turn, makeRequest, [storedModel = m_state.claudeModel.value()](const HttpReply &reply) {
        return AnthropicMessages::outcome(reply, storedModel);
    });
}

void ClaudeService::chatOpenAICompatible(ChatProvider provider, const QString &query,
                                         const std::optional<PromptContext> &context)
{
    const bool isGoogle = provider == ChatProvider::google;
    const QString key = m_keychain.get(providerKeyItem(provider)).value_or(QString());
    if (key.isEmpty()) {
        const QString name = isGoogle ? QStringLiteral("Google") : QStringLiteral("OpenAI");
        showError(name + QStringLiteral(" API key missing. Configure it in Settings."));
        return;
    }

    const quint64 turn
        = m_transcript.append(ChatRole::user, ChatCompletions::turnText(query, context));
    const QUrl endpoint = isGoogle
        ? onHost(m_hosts.google, QLatin1String("/v1beta/openai/chat/completions"))
        : onHost(m_hosts.openai, QLatin1String("/v1/chat/completions"));
    const auto makeRequest
        = [endpoint, key, model = m_state.activeChatModel(), turns = m_transcript.turns()] {
              return ChatCompletions::request(endpoint, key, model, turns);
          };
    callAPI(turn, makeRequest, ChatCompletions::outcome);
}

QString ClaudeService::model() const
{
    const QString chosen = m_state.claudeModel.value().trimmed();
    return chosen.isEmpty() ? QStringLiteral("claude-sonnet-4-6") : chosen;
}

void ClaudeService::callAPI(quint64 turn, std::function<HttpRequest()> makeRequest,
                            const std::function<ChatOutcome(const HttpReply &)> &understand)
{
    const auto send = [=, this](const HttpRequest &request) {
        m_http.send(request, &m_owner, [=, this](const HttpReply &reply) {
            m_worker.post(
                m_queue, &m_owner, [=] { return understand(reply); },
                [=, this](const ChatOutcome &outcome) { handleChatResult(turn, outcome); });
        });
    };
    m_worker.post(m_queue, &m_owner, std::move(makeRequest), send);
}

void ClaudeService::handleChatResult(quint64 turn, const ChatOutcome &outcome)
{
    if (outcome.withdrawsTurn)
        m_transcript.remove(turn);
    if (outcome.turn)
        m_transcript.append(ChatRole::assistant, *outcome.turn);
    if (!outcome.text) {
        showError(outcome.error);
        return;
    }

    QList<ChatMessage> history = m_state.chatHistory;
    history.append({QUuid::createUuid(), ChatRole::assistant, *outcome.text});
    m_state.chatHistory = history;
    m_state.stateOverride = std::nullopt;
    m_island.show(IslandView::prompt);
    Q_EMIT m_notifications.triggerEmote(BotEmote::happy);
}

void ClaudeService::showError(const QString &message)
{
    m_state.stateOverride = BotState::error;
    m_island.say(firstCharacters(message, longestError));
}

} // namespace tirlo
