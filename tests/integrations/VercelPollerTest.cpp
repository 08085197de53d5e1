#include "integrations/VercelPoller.h"

#include "PollerFixture.h"

namespace tirlo {
namespace {

const auto pillId = u"integration_vercel"_s;

QByteArray deployment(const char *id, const char *name, const char *state)
{
    return QStringLiteral(R"({"uid": "%1", "name": "%2", "state": "%3"})")
        .arg(QLatin1String(id), QLatin1String(name), QLatin1String(state))
        .toUtf8();
}

QByteArray deployments(const QByteArrayList &list)
{
    return "{\"deployments\": [" + list.join(',') + "]}";
}

struct VercelPollerTest : PollerFixture
{
    QStringList shownIds() const
    {
        QStringList ids;
        for (const VercelDeployment &each : state.vercelDeployments.value())
            ids += each.id;
        return ids;
    }

    VercelPoller poller{context};
};

TEST_F(VercelPollerTest, AsksWithTheTokenAndReadsWhatTheServiceTells)
{
    cycle(poller, R"({"deployments": [{
        "uid": "dpl_1", "name": "site", "url": "site-1.vercel.app", "state": "READY",
        "createdAt": 1773480413589, "created": 1, "meta": {
            "githubCommitMessage": 7, "gitlabCommitMessage": "Fix the door",
            "bitbucketCommitMessage": "no", "bitbucketBranch": "main", "githubCommitRef": null}
    }], "pagination": {"count": 1, "next": null}})");

    const HttpRequest &request = http.requests.at(0);
    EXPECT_EQ(request.method, "GET");
    EXPECT_EQ(request.url.toString(), "https://api.vercel.com/v6/deployments?limit=5");
    EXPECT_EQ(request.headers,
              (QList<std::pair<QByteArray, QByteArray>>{{"Authorization", "Bearer key"},
                                                        {"Accept", "application/json"}}));
    EXPECT_EQ(request.timeout, 10);

    EXPECT_EQ(state.vercelDeployments.value(),
              (QList<VercelDeployment>{{.id = "dpl_1",
                                        .projectName = "site",
                                        .url = "site-1.vercel.app",
                                        .state = "READY",
                                        .createdAt = QDateTime::fromMSecsSinceEpoch(1773480413589),
                                        .commitMessage = "Fix the door",
                                        .branch = "main"}}));
}

TEST_F(VercelPollerTest, KeepsTheEndedDeploymentsInOrderAndDropsWhatItCannotRead)
{
    cycle(poller,
          deployments({deployment("1", "a", "BUILDING"), deployment("2", "b", "CANCELED"),
                       R"({"uid": 3, "name": "c", "state": "READY"})",
                       R"({"uid": "4", "name": ["d"], "state": "READY"})",
                       R"({"uid": "5", "name": "e", "state": true})",
                       R"({"uid": "6", "name": "f", "state": "ERROR", "url": 1, "meta": [],
                                   "createdAt": "1773480413589"})",
                       deployment("7", "g", "ready"), deployment("8", "h", "READY")}));
    EXPECT_EQ(shownIds(), QStringList({"2", "6", "8"}));
    const VercelDeployment bare = state.vercelDeployments.value().at(1);
    EXPECT_EQ(bare,
              (VercelDeployment{.id = "6",
                                .projectName = "f",
                                .url = "",
                                .state = "ERROR",
                                .createdAt = QDateTime::fromMSecsSinceEpoch(0),
                                .commitMessage = {},
                                .branch = {}}));

    for (const QByteArray &body :
         {deployments({deployment("9", "a", "QUEUED")}), deployments({}), QByteArray("[]"),
          QByteArray("<html>"), QByteArray(), QByteArray(R"({"deployments": {}})"),
          QByteArray(R"({"deployments": ["x"]})")}) {
        cycle(poller, body);
        EXPECT_EQ(shownIds(), QStringList({"2", "6", "8"})) << body.constData();
    }
}

TEST_F(VercelPollerTest, ReactsOnceToTheNewestDeployment)
{
    const struct
    {
        const char *state;
        BotState mood;
        PillBadge badge;
        const char *sound;
    } rows[] = {
        {"READY", BotState::finished, PillBadge::finished, "finish"},
        {"ERROR", BotState::error, PillBadge::error, "error"},
        {"CANCELED", BotState::error, PillBadge::error, "error"},
    };
    activate(pillId);
    for (const bool hasFocus : {false, true}) {
        state.focusId = hasFocus ? pillId : u"integration_claude"_s;
        for (const auto &row : rows) {
            const QByteArray id = QByteArray(row.state) + (hasFocus ? "1" : "0");
            const QByteArray body = deployments(
                {deployment(id.constData(), "site", row.state), deployment("old", "b", "READY")});
            cycle(poller, body);
            cycle(poller, body);
            EXPECT_EQ(pill(pillId).state, row.mood);
            EXPECT_EQ(pill(pillId).steps, QStringList("site"));
            EXPECT_EQ(pill(pillId).pillBadge, hasFocus ? std::nullopt : std::optional(row.badge));
            EXPECT_EQ(sound.played, QStringList(row.sound));
            EXPECT_EQ(reveals, 1);
            sound.played.clear();
            reveals = 0;

            queue.advance(59.9);
            EXPECT_EQ(pill(pillId).state, row.mood);
            queue.advance(0.1);
            EXPECT_EQ(pill(pillId).state, BotState::idle);
            EXPECT_EQ(pill(pillId).steps, QStringList());
            EXPECT_EQ(pill(pillId).pillBadge, std::nullopt);
        }
    }
}

TEST_F(VercelPollerTest, LeavesAPillAloneThatSomebodyElseTookOver)
{
    activate(pillId);
    cycle(poller, deployments({deployment("1", "site", "READY")}));
    queue.advance(10);
    state.updateTask(pillId, BotState::working);
    const AgentTask taken = pill(pillId);
    queue.advance(60);
    EXPECT_EQ(pill(pillId), taken);

    cycle(poller, deployments({deployment("2", "site", "READY")}));
    state.toggleIntegration(pillId);
    queue.advance(60);
    EXPECT_FALSE(state.task(pillId));
}

TEST_F(VercelPollerTest, FillsTheListWithoutAReactionWhereNoneIsWanted)
{
    cycle(poller, deployments({deployment("1", "site", "READY")}));
    EXPECT_EQ(shownIds(), QStringList("1"));
    EXPECT_TRUE(sound.played.isEmpty()) << "there is no pill";
    EXPECT_EQ(reveals, 0);

    activate(pillId);
    cycle(poller, deployments({deployment("1", "site", "READY")}));
    EXPECT_TRUE(sound.played.isEmpty()) << "the deployment was seen before the pill came";

    state.vercelProjectFilter = QSet<QString>{u"other"_s};
    cycle(poller, deployments({deployment("2", "site", "ERROR")}));
    EXPECT_EQ(shownIds(), QStringList("2"));
    EXPECT_TRUE(sound.played.isEmpty()) << "the project is filtered out";

    cycle(poller,
          deployments({deployment("3", "site", "ERROR"), deployment("4", "other", "READY")}));
    EXPECT_EQ(pill(pillId).steps, QStringList("other"));
    EXPECT_EQ(sound.played, QStringList("finish"));
}

} // namespace
} // namespace tirlo
