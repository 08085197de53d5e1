#pragma once

#include "chat/ClaudeService.h"
#include "core/KeychainStore.h"
#include "support/MemorySecretStore.h"
#include "support/StandInIsland.h"
#include "support/StoreFixture.h"

#include <QJsonDocument>
#include <QPointer>

#include <utility>

namespace tirlo {

/// The three providers: they refuse a wrong path or key and give a question its own words back.
class FakeProviders final : public HttpClient
{
public:
    explicit FakeProviders(MainQueue &queue)
        : m_queue(queue)
    {
    }

    void send(const HttpRequest &request, const QObject *owner,
              std::function<void(const HttpReply &)> done) override
    {
        requests.push_back(request);
        const HttpReply reply = replies.isEmpty() ? replyTo(request) : replies.takeFirst();
        if (hangs)
            return;
        m_queue.post([reply, done, life = QPointer(owner)] {
            if (life)
                done(reply);
        });
    }

    /// The body of the last request.
    [[nodiscard]] QJsonObject lastBody() const
    {
        return QJsonDocument::fromJson(requests.back().body).object();
    }

    static QByteArray textOf(const QJsonObject &object) { return QJsonDocument(object).toJson(); }

    std::vector<HttpRequest> requests;
    /// What comes of the next requests, whatever they ask for.
    QList<HttpReply> replies;
    /// The models of whoever is asked for them.
    QJsonArray models;
    bool hangs = false;

private:
    [[nodiscard]] HttpReply replyTo(const HttpRequest &request) const
    {
        const QString path = request.url.path();
        const bool isAnthropic = request.url.host() == "api.anthropic.com";
        const std::pair<QByteArray, QByteArray> key = isAnthropic
            ? std::pair("x-api-key", "sk-right")
            : std::pair("Authorization", "Bearer sk-right");
        if (!request.headers.contains(key))
            return {.status = 401};
        const QString root = request.url.host().contains("google") ? "/v1beta/openai" : "/v1";
        if (request.method == "GET" && path == root + "/models")
            return {.status = 200, .body = textOf({{"data", models}})};
        if (request.method != "POST"
            || path != root + (isAnthropic ? "/messages" : "/chat/completions"))
            return {.status = 404};
        const QJsonValue content = lastBody()["messages"].toArray().last()["content"];
        const QString text
            = "You said: " + (isAnthropic ? content.toArray().last()["text"] : content).toString();
        return {.status = 200,
                .body
                = textOf({{"content", QJsonArray{QJsonObject{{"type", "text"}, {"text", text}}}},
                          {"choices",
                           QJsonArray{QJsonObject{{"message", QJsonObject{{"content", text}}}}}}})};
    }

    MainQueue &m_queue;
};

/// The chat on a store of its own, with the providers played.
struct ChatFixture : StoreFixture
{
    ChatFixture()
    {
        keychain.load();
        QObject::connect(&notifications, &Notifications::triggerEmote, &notifications,
                         [this](BotEmote emote) { emotes.append(rawText(emote)); });
        for (const auto provider : allCases<ChatProvider>())
            setKey(provider, "sk-right");
    }

    void setKey(ChatProvider provider, const QString &key)
    {
        keychain.set(rawText(provider) + "-api-key", key);
    }

    /// Forgets the conversation, as a new start does.
    void restart()
    {
        service.emplace(state, notifications, island, keychain, web, queue, ProviderHosts());
    }

    /// Puts the question and waits for an answer or a note.
    void ask(const QString &query, const std::optional<PromptContext> &context = std::nullopt)
    {
        island.setView(IslandView::searching);
        state.noteMessage = std::nullopt;
        service->chat(query, context);
        ASSERT_TRUE(eventually([this] { return state.view != IslandView::searching; }));
    }

    [[nodiscard]] QString lastAnswer() const
    {
        return state.chatHistory.value().isEmpty() ? QString()
                                                   : state.chatHistory.value().last().content;
    }

    /// The note on show; empty if an answer is on show instead.
    [[nodiscard]] QString note() const
    {
        const bool isShown
            = state.view == IslandView::note && state.stateOverride.value() == BotState::error;
        return isShown ? state.noteMessage.value().value_or(QString()) : QString();
    }

    /// The messages of the last request, system prompt aside.
    [[nodiscard]] QJsonArray messages() const
    {
        QJsonArray messages = web.lastBody()["messages"].toArray();
        if (messages.first()["role"] == "system")
            messages.removeFirst();
        return messages;
    }

    StandInIsland island{state};
    QStringList emotes;
    FakeProviders web{queue};
    MemorySecretStore secrets;
    KeychainStore keychain{secrets};
    std::optional<ClaudeService> service{std::in_place, state, notifications, island,
                                         keychain,      web,   queue,         ProviderHosts()};
};

inline QJsonValue json(const QByteArray &text)
{
    return QJsonDocument::fromJson("[" + text + "]").array().at(0);
}

} // namespace tirlo
