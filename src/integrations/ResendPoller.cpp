#include "ResendPoller.h"

#include "core/AppState.h"
#include "core/ServiceData.h"

namespace tirlo {

namespace {

constexpr qsizetype keptEmails = 5;

struct SentEmails
{
    QList<ResendEmail> latest;
    std::optional<qint64> total;
};

QStringList parseRecipients(const QJsonValue &to)
{
    if (to.isString())
        return {to.toString()};
    QStringList recipients;
    const QJsonArray array = to.toArray();
    for (const auto recipient : array) {
        if (!recipient.isString())
            return {};
        recipients.append(recipient.toString());
    }
    return recipients;
}

std::optional<ResendEmail> parseEmail(const QJsonObject &object, const QDateTime &now)
{
    const auto id = Json::text(object, QLatin1String("id"));
    const auto createdAt = Json::text(object, QLatin1String("created_at"));
    if (!id || !createdAt)
        return std::nullopt;
    return ResendEmail{
        .id = *id,
        .to = parseRecipients(object.value(QLatin1String("to"))),
        .subject = Json::text(object, QLatin1String("subject")).value_or(QString()),
        .createdAt = isoDate(*createdAt).value_or(now),
        .lastEvent = Json::text(object, QLatin1String("last_event")).value_or(QString()),
    };
}

std::optional<SentEmails> parseEmails(const QByteArray &body, const QDateTime &now)
{
    const QJsonObject answer = answeredObject(body);
    const auto emails
        = parsedList(answer, QLatin1String("data"),
                     [&now](const QJsonObject &object) { return parseEmail(object, now); });
    if (!emails)
        return std::nullopt;

    auto total = Json::integer(answer, QLatin1String("total"));
    if (!total)
        total = Json::integer(answer, QLatin1String("count"));
    if (!total && !emails->isEmpty())
        total = emails->size();
    return SentEmails{emails->mid(0, keptEmails), total};
}

} // namespace

ResendPoller::ResendPoller(const PollerContext &context)
    : Poller(context, {.firstAfterStart = 6, .interval = 60})
{
}

void ResendPoller::runCycle()
{
    const auto key = this->key(QLatin1String("resend-api-key"));
    if (!key)
        return;

    // The page is larger than what is kept: its length stands in for a total that isn't told.
    const HttpRequest request{
        .url = QUrl(m_context.hosts.resend + QStringLiteral("/emails?limit=100")),
        .headers = {{"Authorization", "Bearer " + key->toUtf8()}, {"Accept", "application/json"}},
    };
    const auto parse = [now = m_context.queue.wallClock()](const QByteArray &body) {
        return parseEmails(body, now);
    };
    fetch(request, parse, [this](const SentEmails &emails) {
        m_context.state.services().resendEmails = emails.latest;
        m_context.state.services().resendTotal = emails.total;
    });
}

} // namespace tirlo
