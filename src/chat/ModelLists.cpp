#include "ModelLists.h"

#include "core/Json.h"

#include <algorithm>
#include <array>
#include <span>

namespace tirlo::ModelLists {

namespace {

constexpr std::array otherGoogleModels{
    QLatin1String("embed"), QLatin1String("imagen"), QLatin1String("veo"),  QLatin1String("aqa"),
    QLatin1String("tts"),   QLatin1String("audio"),  QLatin1String("live"),
};

constexpr std::array otherOpenAIModels{
    QLatin1String("embed"),      QLatin1String("tts"),     QLatin1String("whisper"),
    QLatin1String("dall-e"),     QLatin1String("audio"),   QLatin1String("realtime"),
    QLatin1String("moderat"),    QLatin1String("codex"),   QLatin1String("computer-use"),
    QLatin1String("transcribe"), QLatin1String("image"),   QLatin1String("sora"),
    QLatin1String("babbage"),    QLatin1String("davinci"), QLatin1String("instruct"),
};

/// True if the id names a model for something other than chat.
bool isOther(const QString &id, std::span<const QLatin1String> parts)
{
    const QString lower = id.toLower();
    return std::ranges::any_of(parts, [&](QLatin1String part) { return lower.contains(part); });
}

/// The objects in the answer's list; none if it is no list of objects.
QList<QJsonObject> entries(const HttpReply &reply)
{
    const auto body = reply.status == 200 ? Json::parsedObject(reply.body) : std::nullopt;
    const auto data = body ? Json::objects(*body, QLatin1String("data")) : std::nullopt;
    return data.value_or(QList<QJsonObject>());
}

} // namespace

QList<ProviderModel> builtInAnthropicModels()
{
    return {{QStringLiteral("claude-sonnet-4-6"), QStringLiteral("Claude Sonnet 4.6")},
            {QStringLiteral("claude-sonnet-5-5"), QStringLiteral("Claude Sonnet 5.5")},
            {QStringLiteral("claude-opus-5-5"), QStringLiteral("Claude Opus 5.5")},
            {QStringLiteral("claude-haiku-4-5-20251001"), QStringLiteral("Claude Haiku 4.5")}};
}

QList<ProviderModel> anthropicModels(const HttpReply &reply)
{
    QList<ProviderModel> models;
    for (const QJsonObject &entry : entries(reply)) {
        const auto id = Json::text(entry, QLatin1String("id"));
        const auto name = Json::text(entry, QLatin1String("display_name"));
        if (id && name)
            models.append({*id, *name});
    }
    return models;
}

QList<ProviderModel> googleModels(const HttpReply &reply)
{
    const QString prefix = QStringLiteral("models/");
    QList<ProviderModel> models;
    for (const QJsonObject &entry : entries(reply)) {
        auto id = Json::text(entry, QLatin1String("id"));
        if (!id)
            continue;
        if (id->startsWith(prefix))
            id->remove(0, prefix.size());
        if (!isOther(*id, otherGoogleModels))
            models.append({*id, *id});
    }
    return models;
}

QList<ProviderModel> openAIModels(const HttpReply &reply)
{
    struct Dated
    {
        QString id;
        qint64 created;
    };
    QList<Dated> dated;
    for (const QJsonObject &entry : entries(reply)) {
        const auto id = Json::text(entry, QLatin1String("id"));
        if (id && !isOther(*id, otherOpenAIModels))
            dated.append({*id, entry.value(QLatin1String("created")).toInteger(0)});
    }
    std::ranges::stable_sort(dated, std::ranges::greater{}, &Dated::created);

    QList<ProviderModel> models;
    for (const Dated &model : dated)
        models.append({model.id, model.id});
    return models;
}

} // namespace tirlo::ModelLists
