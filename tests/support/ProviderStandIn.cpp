#include "ProviderStandIn.h"

#include <QJsonDocument>

#include <algorithm>

namespace tirlo {

namespace {

LoopbackAnswer json(const QJsonObject &object, int status = 200)
{
    return {.status = status,
            .body = QJsonDocument(object).toJson(QJsonDocument::Compact),
            .headers = {{"Content-Type", "application/json"}}};
}

LoopbackAnswer anthropicRefusal(int status, const QString &type, const QString &message)
{
    return json({{"type", "error"}, {"error", QJsonObject{{"type", type}, {"message", message}}}},
                status);
}

LoopbackAnswer completionsRefusal(int status, const QString &message)
{
    return json({{"error", QJsonObject{{"message", message}, {"code", status}}}}, status);
}

bool lists(const QJsonArray &models, const QString &id)
{
    return std::ranges::any_of(models, [&](const QJsonValue &model) { return model["id"] == id; });
}

/// What is wrong with a conversation; empty if it may be answered.
QString flaw(const QJsonArray &messages)
{
    if (messages.isEmpty() || messages.last()["role"] != "user")
        return "messages: the last one must be the user's";
    for (const QJsonValue &message : messages) {
        const QJsonValue content = message["content"];
        if (!content.isString() && content.toArray().isEmpty())
            return "messages: content must not be empty";
        for (const QJsonValue &block : content.toArray()) {
            if (!block["type"].isString())
                return "messages: a block needs a type";
        }
    }
    return {};
}

} // namespace

ProviderStandIn::ProviderStandIn()
    : anthropicModels{QJsonObject{{"id", "claude-sonnet-4-6"}, {"display_name", "Sonnet 4.6"}}}
    , googleModels{QJsonObject{{"id", "models/gemini-2.0-flash"}}}
    , openAIModels{QJsonObject{{"id", "gpt-4o"}, {"created", 1715367049}}}
{
    anthropic.respond = [this](const LoopbackRequest &request) { return anthropicAnswer(request); };
    google.respond = [this](const LoopbackRequest &request) {
        QJsonArray known = googleModels;
        for (QJsonValueRef model : known)
            model = QJsonObject{{"id", model.toObject()["id"].toString().remove("models/")}};
        return completionsAnswer(request, "/v1beta/openai", known);
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
        return anthropicRefusal(401, "authentication_error", "invalid x-api-key");
    if (request.header("anthropic-version") != "2023-06-01")
        return anthropicRefusal(400, "invalid_request_error", "anthropic-version: is required");
    if (request.method == "GET" && request.target == "/v1/models?limit=100")
        return json({{"data", anthropicModels}, {"has_more", false}});
    if (request.method != "POST" || request.target != "/v1/messages")
        return anthropicRefusal(404, "not_found_error", "Not found");

    const QJsonObject body = QJsonDocument::fromJson(request.body).object();
    const QJsonArray messages = body["messages"].toArray();
    if (const QString found = flaw(messages); !found.isEmpty())
        return anthropicRefusal(400, "invalid_request_error", found);
    if (!lists(anthropicModels, body["model"].toString()))
        return anthropicRefusal(404, "not_found_error", "model: " + body["model"].toString());
    const QJsonArray blocks = messages.last()["content"].toArray();
    const QJsonObject text{{"type", "text"}, {"text", nextAnswer(blocks.last()["text"])}};
    return json(
        {{"role", "assistant"}, {"stop_reason", "end_turn"}, {"content", QJsonArray{text}}});
}

LoopbackAnswer ProviderStandIn::completionsAnswer(const LoopbackRequest &request,
                                                  const QByteArray &root, const QJsonArray &models)
{
    if (request.header("Authorization") != "Bearer " + key.toUtf8())
        return completionsRefusal(401, "Incorrect API key provided");
    if (request.method == "GET" && request.target == root + "/models")
        return json({{"object", "list"}, {"data", root == "/v1" ? openAIModels : googleModels}});
    if (request.method != "POST" || request.target != root + "/chat/completions")
        return completionsRefusal(404, "Unknown request URL");

    const QJsonObject body = QJsonDocument::fromJson(request.body).object();
    const QJsonArray messages = body["messages"].toArray();
    if (const QString found = flaw(messages); !found.isEmpty())
        return completionsRefusal(400, found);
    if (!lists(models, body["model"].toString()))
        return completionsRefusal(404, "The model does not exist");
    const QJsonObject message{{"role", "assistant"},
                              {"content", nextAnswer(messages.last()["content"])}};
    return json({{"choices", QJsonArray{QJsonObject{{"index", 0}, {"message", message}}}}});
}

QString ProviderStandIn::nextAnswer(const QJsonValue &question)
{
    return answers.isEmpty() ? "You said: " + question.toString() : answers.takeFirst();
}

} // namespace tirlo
