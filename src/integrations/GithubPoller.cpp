#include "GithubPoller.h"

#include "core/AppState.h"
#include "core/ServiceData.h"

namespace tirlo {

namespace {

/// Seconds; a page of 100 repositories takes the service its time.
constexpr double starsTimeout = 15;

std::optional<qint64> parseRepos(const QByteArray &body)
{
    const auto user = Json::parsedObject(body);
    if (!user)
        return std::nullopt;
    const qint64 open = Json::integer(*user, QLatin1String("public_repos")).value_or(0);
    auto closed = Json::integer(*user, QLatin1String("owned_private_repos"));
    if (!closed)
        closed = Json::integer(*user, QLatin1String("total_private_repos"));
    return boundedSum(open, closed.value_or(0));
}

std::optional<qint64> parseStars(const QByteArray &body)
{
    const QJsonDocument answer = QJsonDocument::fromJson(body);
    const auto repositories = Json::objects(QJsonValue(answer.array()));
    if (!answer.isArray() || !repositories)
        return std::nullopt;
    qint64 stars = 0;
    for (const QJsonObject &repository : *repositories) {
        const auto count = Json::integer(repository, QLatin1String("stargazers_count"));
        stars = boundedSum(stars, count.value_or(0));
    }
    return stars;
}

} // namespace

GithubPoller::GithubPoller(const PollerContext &context)
    : Poller(context, {.firstAfterStart = 7, .interval = 300})
{
}

void GithubPoller::runCycle()
{
    if (const auto token = key(QLatin1String("github-token")))
        fetchUser(*token);
}

HttpRequest GithubPoller::request(const QString &path, const QString &token) const
{
    return {
        .url = QUrl(m_context.hosts.github + path),
        .headers = {{"Authorization", "Bearer " + token.toUtf8()},
                    {"Accept", "application/vnd.github+json"}},
    };
}

void GithubPoller::fetchUser(const QString &token)
{
    const auto accept = [this, token](qint64 totalRepos) { fetchStars(token, totalRepos); };
    fetch(request(QStringLiteral("/user"), token), parseRepos, accept);
}

void GithubPoller::fetchStars(const QString &token, qint64 totalRepos)
{
    HttpRequest stars
        = request(QStringLiteral("/user/repos?per_page=100&affiliation=owner&sort=pushed"), token);
    stars.timeout = starsTimeout;
    fetch(stars, parseStars, [this, totalRepos](qint64 totalStars) {
        m_context.state.services().githubStats = GitHubStats{totalRepos, totalStars};
    });
}

} // namespace tirlo
