#include "ChatCompletions.h"

#include "core/Json.h"

#include <QJsonDocument>

namespace tirlo::ChatCompletions {

namespace {

constexpr double timeout = 30;

/// Why the service refused the request.
QString refusal(const HttpReply &reply)
{
    const auto body = Json::parsedObject(reply.body);
    const auto error = body ? Json::object(*body, QLatin1String("error")) : std::nullopt;
    const auto message = error ? Json::text(*error, QLatin1String("message")) : std::nullopt;
    return message.value_or(QStringLiteral("HTTP %1").arg(reply.status));
}

} // namespace

QString turnText(const QString &query, const std::optional<PromptContext> &context)
{
    return context ? contextText(*context) + QStringLiteral("\n\n") + query : query;
}

HttpRequest request(const QUrl &endpoint, const QString &key, const QString &model,
                    const QList<Turn> &turns)
{
    QJsonArray messages{QJsonObject{{QStringLiteral("role"), QStringLiteral("system")},
                                    {QStringLiteral("content"), systemPrompt()}}};
    for (const Turn &turn : turns)
        messages.append(flatMessageOf(turn));
    const QJsonObject body{{QStringLiteral("model"), model},
                           {QStringLiteral("max_tokens"), maxTokens},
                           {QStringLiteral("messages"), messages}};
    return {.method = "POST",
            .url = endpoint,
            .headers
            = {{"Content-Type", "application/json"}, {"Authorization", "Bearer " + key.toUtf8()}},
            .body = QJsonDocument(body).toJson(QJsonDocument::Compact),
            .timeout = timeout};
}

ChatOutcome outcome(const HttpReply &reply)
{
    if (!reply.error.isEmpty())
        return {.error = reply.error, .withdrawsTurn = true};
    if (reply.status != 200)
        return {.error = refusal(reply), .withdrawsTurn = true};

    const auto body = Json::parsedObject(reply.body);
    const auto choices = body ? Json::objects(*body, QLatin1String("choices")) : std::nullopt;
    const QJsonValue content
        = QJsonValue(choices.value_or(QList<QJsonObject>()).value(0))[u"message"][u"content"];
    if (!content.isString())
        return {.error = QStringLiteral("Unexpected response format"), .withdrawsTurn = true};
    const QString text = content.toString().trimmed();
    return {.turn = text, .text = text};
}

} // namespace tirlo::ChatCompletions
