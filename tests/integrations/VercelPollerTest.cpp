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

TEST_F(VercelPollerTest, KeepsTheEndedDeploymentsInOrderAndDropsWhatItCannotRead)
{
    cycle(poller,
          deployments({R"({"uid": "1", "name": "site", "url": "site-1.vercel.app", "state": "READY",
                           "createdAt": 1773480413589, "created": 1, "meta": {
                           "githubCommitMessage": 7, "gitlabCommitMessage": "Fix the door",
                           "bitbucketCommitMessage": "no", "bitbucketBranch": "main",
                           "githubCommitRef": null}})",
                       deployment("2", "b", "BUILDING"), deployment("3", "c", "CANCELED"),
                       R"({"uid": 4, "name": "d", "state": "READY"})",
                       R"({"uid": "5", "name": ["e"], "state": "READY"})",
                       R"({"uid": "6", "name": "f", "state": true})",
                       R"({"uid": "7", "name": "g", "state": "ERROR", "url": 1, "meta": [],
                           "createdAt": "1773480413589"})"}));
    expectRequest(u"https://api.vercel.com/v6/deployments?limit=5"_s,
                  {{"Authorization", "Bearer key"}, {"Accept", "application/json"}});
    const auto epoch = QDateTime::fromMSecsSinceEpoch(0);
    const QList<VercelDeployment> kept{
        {"1", "site", "site-1.vercel.app", "READY", QDateTime::fromMSecsSinceEpoch(1773480413589),
         "Fix the door", "main"},
        {"3", "c", "", "CANCELED", epoch, {}, {}},
        {"7", "g", "", "ERROR", epoch, {}, {}},
    };
    EXPECT_EQ(state.vercelDeployments.value(), kept);

    for (const QByteArray &body : nonsense
             + QByteArrayList{deployments({deployment("8", "a", "QUEUED")}), deployments({})}) {
        cycle(poller, body);
        EXPECT_EQ(state.vercelDeployments.value(), kept) << body.constData();
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
            state.editTask(pillId, [](AgentTask &task) { task.stepIndex = 4; });
            cycle(poller, body);
            cycle(poller, body);
            EXPECT_EQ(task(pillId).state, row.mood);
            EXPECT_EQ(task(pillId).steps, QStringList("site"));
            EXPECT_EQ(task(pillId).stepIndex, 0) << "the number of a step that has gone";
            EXPECT_EQ(task(pillId).pillBadge, hasFocus ? std::nullopt : std::optional(row.badge));
            EXPECT_EQ(sound.played, QStringList(row.sound));
            EXPECT_EQ(reveals, 1);
            sound.played.clear();
            reveals = 0;

            queue.advance(59.9);
            EXPECT_EQ(task(pillId).state, row.mood);
            queue.advance(0.1);
            EXPECT_EQ(task(pillId).state, BotState::idle);
            EXPECT_EQ(task(pillId).steps, QStringList());
            EXPECT_EQ(task(pillId).stepIndex, 0);
            EXPECT_EQ(task(pillId).pillBadge, std::nullopt);
        }
    }
}

TEST_F(VercelPollerTest, LeavesAPillAloneThatSomebodyElseTookOver)
{
    activate(pillId);
    cycle(poller, deployments({deployment("1", "site", "READY")}));
    queue.advance(10);
    state.updateTask(pillId, BotState::working);
    const AgentTask taken = task(pillId);
    queue.advance(60);
    EXPECT_EQ(task(pillId), taken);

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
    EXPECT_EQ(task(pillId).steps, QStringList("other"));
    EXPECT_EQ(sound.played, QStringList("finish"));
}

} // namespace
} // namespace tirlo
