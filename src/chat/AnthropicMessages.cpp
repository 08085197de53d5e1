#include "AnthropicMessages.h"

#include "ProviderHosts.h"
#include "core/Json.h"
#include "platform/Utf8.h"

#include <QJsonDocument>

namespace tirlo::AnthropicMessages {

namespace {

constexpr double timeout = 45;
constexpr char webSearchBeta[] = "web-search-2025-03-05";

QJsonArray webSearchTools()
{
    return {QJsonObject{{QStringLiteral("type"), QStringLiteral("web_search_20250305")},
                        {QStringLiteral("name"), QStringLiteral("web_search")},
                        {QStringLiteral("max_uses"), 5}}};
}

/// Why the service refused the request.
QString refusal(const QByteArray &body, const QString &storedModel)
{
    const auto answer = Json::parsedObject(body);
    const auto error = answer ? Json::object(*answer, QLatin1String("error")) : std::nullopt;
    const auto type = error ? Json::text(*error, QLatin1String("type")) : std::nullopt;
    const auto message = error ? Json::text(*error, QLatin1String("message")) : std::nullopt;
    if (!type || !message)
        return textFromUtf8(body).value_or(QStringLiteral("unknown error"));
    if (*type == QStringLiteral("not_found_error")) {
        return QStringLiteral("Model not found: ") + storedModel
            + QStringLiteral(". Pick another one in Settings.");
    }
    return *message;
}

} // namespace

QJsonArray blocks(const QString &query, const std::optional<PromptContext> &context)
{
    QJsonArray blocks;
    if (context)
        blocks.append(textBlock(contextText(*context)));
    blocks.append(textBlock(query));
    return blocks;
}

HttpRequest request(const QUrl &host, const QString &key, const QString &model,
                    const QList<Turn> &turns)
{
    QJsonArray messages;
    for (const Turn &turn : turns)
        messages.append(messageOf(turn));
    const QJsonObject body{{QStringLiteral("model"), model},
                           {QStringLiteral("max_tokens"), maxTokens},
                           {QStringLiteral("tools"), webSearchTools()},
                           {QStringLiteral("system"), systemPrompt()},
                           {QStringLiteral("messages"), messages}};
    return {.method = "POST",
            .url = onHost(host, QLatin1String("/v1/messages")),
            .headers = {{"x-api-key", key.toUtf8()},
                        {"anthropic-version", version},
                        {"content-type", "application/json"},
                        {"anthropic-beta", webSearchBeta}},
            .body = QJsonDocument(body).toJson(QJsonDocument::Compact),
            .timeout = timeout};
}

ChatOutcome outcome(const HttpReply &reply, const QString &storedModel)
{
    if (!reply.error.isEmpty())
        return {.error = reply.error, .withdrawsTurn = true};
    if (reply.status != 200)
        return {.error = refusal(reply.body, storedModel), .withdrawsTurn = true};

    const auto body = Json::parsedObject(reply.body);
    const QJsonValue content = body ? body->value(QLatin1String("content")) : QJsonValue();
    if (!Json::objects(content))
        return {.error = QStringLiteral("Unexpected API response.")};
    const auto text = firstText(content);
    if (!text || text->isEmpty())
        return {.turn = content, .error = QStringLiteral("No response text.")};
    return {.turn = content, .text = text->trimmed()};
}

} // namespace tirlo::AnthropicMessages
