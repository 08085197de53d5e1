#include "NotionPoller.h"

#include "core/AppState.h"
#include "core/ServiceData.h"

namespace tirlo {

namespace {

const QLatin1String titleKey("title");

/// The plain text of the first piece of a rich text; empty if there is none.
QString firstPlainText(const QJsonObject &parent)
{
    const QJsonValue piece = parent.value(titleKey).toArray().first();
    return Json::text(piece.toObject(), QLatin1String("plain_text")).value_or(QString());
}

QString parseTitle(const QJsonObject &object)
{
    if (Json::text(object, QLatin1String("object")) == QLatin1String("database"))
        return firstPlainText(object);

    const QJsonObject properties = object.value(QLatin1String("properties")).toObject();
    for (const auto property : properties) {
        if (Json::text(property.toObject(), QLatin1String("type")) == titleKey)
            return firstPlainText(property.toObject());
    }
    return {};
}

std::optional<NotionPage> parsePage(const QJsonObject &object, const QDateTime &now)
{
    const auto id = Json::text(object, QLatin1String("id"));
    if (!id)
        return std::nullopt;

    const QString title = parseTitle(object);
    const QJsonObject icon = object.value(QLatin1String("icon")).toObject();
    const bool hasEmoji = Json::text(icon, QLatin1String("type")) == QLatin1String("emoji");
    const auto edited = Json::text(object, QLatin1String("last_edited_time"));
    return NotionPage{
        .id = *id,
        .title = title.isEmpty() ? QStringLiteral("Untitled") : title,
        .emoji = hasEmoji ? Json::text(icon, QLatin1String("emoji")) : std::nullopt,
        .lastEditedAt = isoDate(edited.value_or(QString())).value_or(now),
        .url = Json::text(object, QLatin1String("url")).value_or(QString()),
    };
}

} // namespace

NotionPoller::NotionPoller(const PollerContext &context)
    : Poller(context, {.firstAfterStart = 9, .interval = 300})
{
}

void NotionPoller::runCycle()
{
    const auto key = this->key(QLatin1String("notion-api-key"));
    if (!key)
        return;

    const QJsonObject search{
        {QStringLiteral("sort"),
         QJsonObject{{QStringLiteral("direction"), QStringLiteral("descending")},
                     {QStringLiteral("timestamp"), QStringLiteral("last_edited_time")}}},
        {QStringLiteral("page_size"), 3},
    };
    const HttpRequest request{
        .method = "POST",
        .url = QUrl(m_context.hosts.notion + QStringLiteral("/v1/search")),
        .headers = {{"Authorization", "Bearer " + key->toUtf8()},
                    {"Notion-Version", "2022-06-28"},
                    {"Content-Type", "application/json"}},
        .body = QJsonDocument(search).toJson(QJsonDocument::Compact),
    };
    const auto parse = [now = m_context.queue.wallClock()](const QByteArray &body) {
        return parsedList(answeredObject(body), QLatin1String("results"),
                          [&now](const QJsonObject &object) { return parsePage(object, now); });
    };
    AppState &state = m_context.state;
    fetchList(request, parse, state.services().notionPages, state.services().notionLoaded,
              state.services().notionError);
}

} // namespace tirlo
