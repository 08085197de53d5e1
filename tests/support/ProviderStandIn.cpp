#include "ProviderStandIn.h"

#include <QJsonDocument>

namespace tirlo {

namespace {

LoopbackAnswer json(const QJsonObject &object, int status = 200)
{
    return {.status = status,
            .body = QJsonDocument(object).toJson(QJsonDocument::Compact),
            .headers = {{"Content-Type", "application/json"}}};
}

LoopbackAnswer refusal(int status, const QString &message)
{
    return json({{"error", QJsonObject{{"type", "refusal"}, {"message", message}}}}, status);
}

} // namespace

ProviderStandIn::ProviderStandIn()
    : anthropicModels{QJsonObject{{"id", "claude-sonnet-4-6"}, {"display_name", "Sonnet 4.6"}}}
    , googleModels{QJsonObject{{"id", "models/gemini-2.0-flash"}}}
    , openAIModels{QJsonObject{{"id", "gpt-4o"}, {"created", 1715367049}}}
{
    anthropic.respond = [this](const LoopbackRequest &request) { return anthropicAnswer(request); };
    google.respond = [this](const LoopbackRequest &request) {
        return completionsAnswer(request, "/v1beta/openai", googleModels);
    };
    openai.respond = [this](const LoopbackRequest &request) {
        return completionsAnswer(request, "/v1", openAIModels);
    };
}

QJsonObject ProviderStandIn::lastBody(const LoopbackServer &server)
{
    return server.requests.empty() ? QJsonObject()
                                   : QJsonDocument::fromJson(server.requests.back().body).object();
}

LoopbackAnswer ProviderStandIn::anthropicAnswer(const LoopbackRequest &request)
{
    if (request.header("x-api-key") != key.toUtf8())
        return refusal(401, "invalid x-api-key");
    if (request.method == "GET" && request.target == "/v1/models?limit=100")
        return json({{"data", anthropicModels}, {"has_more", false}});
    if (request.method != "POST" || request.target != "/v1/messages")
        return refusal(404, "Not found");

    const QJsonArray blocks = QJsonDocument::fromJson(request.body)
                                  .object()["messages"]
                                  .toArray()
                                  .last()["content"]
                                  .toArray();
    const QJsonObject text{{"type", "text"}, {"text", nextAnswer(blocks.last()["text"])}};
    return json(
        {{"role", "assistant"}, {"stop_reason", "end_turn"}, {"content", QJsonArray{text}}});
}

LoopbackAnswer ProviderStandIn::completionsAnswer(const LoopbackRequest &request,
                                                  const QByteArray &root, const QJsonArray &models)
{
    if (request.header("Authorization") != "Bearer " + key.toUtf8())
        return refusal(401, "Incorrect API key provided");
    if (request.method == "GET" && request.target == root + "/models")
        return json({{"object", "list"}, {"data", models}});
    if (request.method != "POST" || request.target != root + "/chat/completions")
        return refusal(404, "Unknown request URL");

    const QJsonArray messages
        = QJsonDocument::fromJson(request.body).object()["messages"].toArray();
    const QJsonObject message{{"role", "assistant"},
                              {"content", nextAnswer(messages.last()["content"])}};
    return json({{"choices", QJsonArray{QJsonObject{{"index", 0}, {"message", message}}}}});
}

QString ProviderStandIn::nextAnswer(const QJsonValue &question)
{
    return answers.isEmpty() ? "You said: " + question.toString() : answers.takeFirst();
}

} // namespace tirlo
