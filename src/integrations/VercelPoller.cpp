#include "VercelPoller.h"

#include "core/AppState.h"
#include "core/Notifications.h"
#include "core/ServiceData.h"

#include <algorithm>
#include <array>

namespace tirlo {

namespace {

constexpr QLatin1String ready("READY");

/// The states of a deployment that is not being built any more.
constexpr std::array endStates{ready, QLatin1String("ERROR"), QLatin1String("CANCELED")};

std::optional<QString> firstText(const QJsonObject &object,
                                 std::initializer_list<QLatin1String> keys)
{
    for (const QLatin1String key : keys) {
        if (auto text = Json::text(object, key))
            return text;
    }
    return std::nullopt;
}

/// Nothing for a deployment that has not ended.
std::optional<VercelDeployment> parseDeployment(const QJsonObject &object)
{
    const auto id = Json::text(object, QLatin1String("uid"));
    const auto name = Json::text(object, QLatin1String("name"));
    const auto state = Json::text(object, QLatin1String("state"));
    if (!id || !name || !state || std::ranges::find(endStates, *state) == endStates.end())
        return std::nullopt;

    const QJsonObject meta = Json::object(object, QLatin1String("meta")).value_or(QJsonObject());
    const double milliseconds = Json::number(object, QLatin1String("createdAt")).value_or(0);
    return VercelDeployment{
        .id = *id,
        .projectName = *name,
        .url = Json::text(object, QLatin1String("url")).value_or(QString()),
        .state = *state,
        .createdAt = dateSinceEpoch(milliseconds / 1000),
        .commitMessage
        = firstText(meta,
                    {QLatin1String("githubCommitMessage"), QLatin1String("gitlabCommitMessage"),
                     QLatin1String("bitbucketCommitMessage")}),
        .branch = firstText(meta,
                            {QLatin1String("githubCommitRef"), QLatin1String("gitlabCommitRef"),
                             QLatin1String("bitbucketBranch")}),
    };
}

std::optional<QList<VercelDeployment>> parseDeployments(const QByteArray &body)
{
    return parsedList(answeredObject(body), QLatin1String("deployments"), parseDeployment);
}

} // namespace

VercelPoller::VercelPoller(const PollerContext &context)
    : Poller(context, {.firstAfterStart = 5, .interval = 30})
    , m_pill(m_context, QStringLiteral("integration_vercel"), {BotState::finished, BotState::error})
{
}

void VercelPoller::runCycle()
{
    const auto token = key(QLatin1String("vercel-token"));
    if (!token)
        return;

    const HttpRequest request{
        .url = QUrl(m_context.hosts.vercel + QStringLiteral("/v6/deployments?limit=5")),
        .headers = {{"Authorization", "Bearer " + token->toUtf8()}, {"Accept", "application/json"}},
    };
    fetch(request, parseDeployments, [this](const QList<VercelDeployment> &list) {
        if (!list.isEmpty())
            handleDeployments(list);
    });
}

void VercelPoller::handleDeployments(const QList<VercelDeployment> &list)
{
    m_context.state.services().vercelDeployments = list;

    const QSet<QString> filter = m_context.state.vercelProjectFilter;
    const auto newest = std::ranges::find_if(list, [&filter](const VercelDeployment &deployment) {
        return filter.isEmpty() || filter.contains(deployment.projectName);
    });
    if (newest == list.end() || newest->id == m_lastDeploymentId)
        return;
    m_lastDeploymentId = newest->id;

    // A deployment that was called off has failed as well.
    if (m_pill.show(newest->state == ready ? BotState::finished : BotState::error,
                    {newest->projectName}))
        Q_EMIT m_context.notifications.hookReveal();
}

} // namespace tirlo
