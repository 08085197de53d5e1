#pragma once

#include "LoopbackServer.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QStringList>

namespace tirlo {

/// Stands in for the web services of the three chat providers, each on a server of its own.
///
/// It refuses a wrong path or key. A question gets the next of `answers`, or its own words back.
/// What a test wants to go wrong otherwise it scripts on the server itself.
class ProviderStandIn
{
public:
    ProviderStandIn()
    {
        anthropic.respond
            = [this](const LoopbackRequest &request) { return anthropicAnswer(request); };
        google.respond = [this](const LoopbackRequest &request) {
            return completionsAnswer(request, "/v1beta/openai", googleModels);
        };
        openai.respond = [this](const LoopbackRequest &request) {
            return completionsAnswer(request, "/v1", openAIModels);
        };
    }

    LoopbackServer anthropic;
    LoopbackServer google;
    LoopbackServer openai;

    /// The key that all of them take.
    QString key = "sk-right";
    /// Texts of the next answers, whoever is asked.
    QStringList answers;
    /// The models of each, as their lists tell of them.
    QJsonArray anthropicModels{
        QJsonObject{{"id", "claude-sonnet-4-6"}, {"display_name", "Sonnet 4.6"}}};
    QJsonArray googleModels{QJsonObject{{"id", "models/gemini-2.0-flash"}}};
    QJsonArray openAIModels{QJsonObject{{"id", "gpt-4o"}, {"created", 1715367049}}};

    /// The body of the last request to the server, as JSON.
    [[nodiscard]] static QJsonObject lastBody(const LoopbackServer &server)
    {
        return server.requests.empty() ? QJsonObject() : bodyOf(server.requests.back());
    }

private:
    static QJsonObject bodyOf(const LoopbackRequest &request)
    {
        return QJsonDocument::fromJson(request.body).object();
    }

    static LoopbackAnswer json(const QJsonObject &object, int status = 200)
    {
        return {.status = status,
                .body = QJsonDocument(object).toJson(QJsonDocument::Compact),
                .headers = {{"Content-Type", "application/json"}}};
    }

    static LoopbackAnswer refusal(int status, const QString &message)
    {
        return json({{"error", QJsonObject{{"type", "refusal"}, {"message", message}}}}, status);
    }

    LoopbackAnswer anthropicAnswer(const LoopbackRequest &request)
    {
        if (request.header("x-api-key") != key.toUtf8())
            return refusal(401, "invalid x-api-key");
        if (request.method == "GET" && request.target == "/v1/models?limit=100")
            return json({{"data", anthropicModels}, {"has_more", false}});
        if (request.method != "POST" || request.target != "/v1/messages")
            return refusal(404, "Not found");

        const QJsonArray blocks = bodyOf(request)["messages"].toArray().last()["content"].toArray();
        const QJsonObject text{{"type", "text"}, {"text", nextAnswer(blocks.last()["text"])}};
        return json(
            {{"role", "assistant"}, {"stop_reason", "end_turn"}, {"content", QJsonArray{text}}});
    }

    LoopbackAnswer completionsAnswer(const LoopbackRequest &request, const QByteArray &root,
                                     const QJsonArray &models)
    {
        if (request.header("Authorization") != "Bearer " + key.toUtf8())
            return refusal(401, "Incorrect API key provided");
        if (request.method == "GET" && request.target == root + "/models")
            return json({{"object", "list"}, {"data", models}});
        if (request.method != "POST" || request.target != root + "/chat/completions")
            return refusal(404, "Unknown request URL");

        const QJsonValue question = bodyOf(request)["messages"].toArray().last()["content"];
        const QJsonObject message{{"role", "assistant"}, {"content", nextAnswer(question)}};
        return json({{"choices", QJsonArray{QJsonObject{{"index", 0}, {"message", message}}}}});
    }

    QString nextAnswer(const QJsonValue &question)
    {
        return answers.isEmpty() ? "You said: " + question.toString() : answers.takeFirst();
    }
};

} // namespace tirlo
