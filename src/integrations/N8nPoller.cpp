#include "N8nPoller.h"

#include "core/AppLog.h"
#include "core/AppState.h"

#include <algorithm>
#include <array>

namespace tirlo {

namespace {

constexpr QLatin1String success("success");

constexpr std::array terminalStatuses{
    success,
    QLatin1String("error"),
    QLatin1String("crashed"),
    QLatin1String("canceled"),
    QLatin1String("failed"),
};

/// The text without the slashes at both ends.
QString trimmedSlashes(QStringView text)
{
    while (text.startsWith(QLatin1Char('/')))
        text = text.sliced(1);
    while (text.endsWith(QLatin1Char('/')))
        text.chop(1);
    return text.toString();
}

/// The request for an address; nothing if the address can't be understood.
std::optional<HttpRequest> request(const QString &address, const QString &apiKey)
{
    const QUrl url(address, QUrl::StrictMode);
    if (!url.isValid())
        return std::nullopt;
    return HttpRequest{
        .url = url,
        .headers = {{"X-N8N-API-KEY", apiKey.toUtf8()}, {"Accept", "application/json"}},
    };
}

/// The address as it may be logged: without a name and a password in it.
QString logged(const QString &address, const QUrl &url)
{
    if (url.host().isEmpty())
        return QStringLiteral("an address without a host");
    return url.userInfo().isEmpty() ? address : url.toString(QUrl::RemoveUserInfo);
}

} // namespace

N8nPoller::N8nPoller(const PollerContext &context)
    : Poller(context, {.firstAfterStart = 3, .interval = 15})
    , m_pill(m_context, QStringLiteral("integration_n8n"), {BotState::finished, BotState::error})
{
}

void N8nPoller::runCycle()
{
    const auto apiKey = key(QLatin1String("n8n-api-key"));
    const auto url = key(QLatin1String("n8n-url"));
    if (!apiKey || !url) {
        writeLog(QStringLiteral("No API key or URL configured"));
        return;
    }
    const QString base = trimmedSlashes(*url);
    const QString query = QStringLiteral("/executions?limit=1&includeData=false");
    tryList({base + QStringLiteral("/api/v1") + query, base + QStringLiteral("/rest") + query},
            *apiKey, base, 0);
}

void N8nPoller::tryList(const QStringList &urls, const QString &apiKey, const QString &base,
                        qsizetype idx)
{
    if (idx >= urls.size()) {
        writeLog(QStringLiteral("All list endpoints failed"));
        return;
    }
    const auto tryNext = [=, this] { tryList(urls, apiKey, base, idx + 1); };
    const auto list = request(urls[idx], apiKey);
    if (!list) {
        tryNext();
        return;
    }

    writeLog(QStringLiteral("Polling ") + logged(urls[idx], list->url));
    const auto accept
        = [=, this](const N8n::Listing &listing) { handleListing(listing, apiKey, base); };
    const auto fail = [=, this](const HttpReply &reply) {
        if (reply.error.isEmpty())
            writeLog(QStringLiteral("HTTP %1 %2 bytes").arg(reply.status).arg(reply.body.size()));
        else
            writeLog(QStringLiteral("Network error: ") + reply.error);
        tryNext();
    };
    fetch(*list, N8n::parseListing, accept, fail);
}

void N8nPoller::handleListing(const N8n::Listing &listing, const QString &apiKey,
                              const QString &base)
{
    if (!listing.isList)
        return writeLog(QStringLiteral("Unexpected response shape"));
    if (listing.isEmpty)
        return writeLog(QStringLiteral("No executions found"));
    if (!listing.id)
        return writeLog(QStringLiteral("No id in execution"));

    const QString id = *listing.id;
    const QString &status = listing.status;
    if (id == m_lastExecutionId)
        return writeLog(QStringLiteral("Same id=%1 — no change").arg(id));
    if (std::ranges::find(terminalStatuses, status) == terminalStatuses.end()) {
        // The id is not kept, so that this execution is looked at again until it ends.
        return writeLog(QStringLiteral("id=%1 status=%2 — not terminal")
                            .arg(id, status.isEmpty() ? QStringLiteral("?") : status));
    }

    m_lastExecutionId = id;
    writeLog(QStringLiteral("New execution id=%1 status=%2").arg(id, status));
    const QString encodedId = QString::fromLatin1(QUrl::toPercentEncoding(id));
    const QString open = base + QStringLiteral("/api/v1/executions/") + encodedId;
    const QString internal = base + QStringLiteral("/rest/executions/") + encodedId;
    const QString withData = QStringLiteral("?includeData=true");
    fetchDetail({open + withData, open, internal + withData, internal}, apiKey, status == success,
                0);
}

void N8nPoller::fetchDetail(const QStringList &urls, const QString &apiKey, bool success,
                            qsizetype idx)
{
    if (idx >= urls.size()) {
        handleExecution(success, N8n::unnamedWorkflow, std::nullopt);
        return;
    }
    const auto tryNext = [=, this] { fetchDetail(urls, apiKey, success, idx + 1); };
    const auto detail = request(urls[idx], apiKey);
    if (!detail) {
        tryNext();
        return;
    }

    // What can't be read is handed on too: it sends us to the next address.
    const auto parse = [success](const QByteArray &body) {
        return std::make_optional(N8n::parseExecution(body, success));
    };
    const auto accept = [=, this](const std::optional<N8n::Execution> &execution) {
        if (!execution) {
            tryNext();
            return;
        }
        writeLog(QStringLiteral("Parsed: ") + execution->workflowName);
        handleExecution(success, execution->workflowName, execution->detail);
    };
    const auto fail = [=, this](const HttpReply &reply) {
        if (reply.error.isEmpty())
            writeLog(QStringLiteral("Detail HTTP %1").arg(reply.status));
        tryNext();
    };
    // The execution is told of just once, however many lists come in between.
    fetch(*detail, parse, accept, fail, Wanted::all);
}

void N8nPoller::handleExecution(bool success, const QString &name,
                                const std::optional<QString> &detail)
{
    const QSet<QString> filter = m_context.state.n8nWorkflowFilter;
    if (!filter.isEmpty() && !filter.contains(name))
        return;
    QStringList steps{name};
    if (detail)
        steps.append(*detail);
    m_pill.show(success ? BotState::finished : BotState::error, steps);
}

void N8nPoller::writeLog(const QString &line) const
{
    m_context.log.appendAppLog(QStringLiteral("n8n.log"), line, QStringLiteral("HH:mm:ss"));
}

} // namespace tirlo
