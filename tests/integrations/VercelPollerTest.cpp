#include "integrations/VercelPoller.h"

#include "PollerFixture.h"

namespace tirlo {
namespace {

const auto pillId = u"integration_vercel"_s;

QByteArray deployment(const QByteArray &id, const QByteArray &name, const QByteArray &state)
{
    return R"({"uid": ")" + id + R"(", "name": ")" + name + R"(", "state": ")" + state + R"("})";
}

struct VercelPollerTest : PollerFixture
{
    /// Runs a cycle in which the service tells of these deployments.
    void cycle(const QByteArrayList &list)
    {
        PollerFixture::cycle(poller, "{\"deployments\": [" + list.join(',') + "]}");
    }

    VercelPoller poller{context};
};

TEST_F(VercelPollerTest, KeepsTheEndedDeploymentsInOrderAndDropsWhatItCannotRead)
{
    cycle({R"({"uid": "1", "name": "site", "url": "site-1.vercel.app", "state": "READY",
               "createdAt": 1773480413589, "created": 1, "meta": {
               "githubCommitMessage": 7, "gitlabCommitMessage": "Fix the door",
               "bitbucketCommitMessage": "no", "bitbucketBranch": "main",
               "githubCommitRef": null}})",
           deployment("2", "b", "BUILDING"), deployment("3", "c", "CANCELED"),
           R"({"uid": 4, "name": "d", "state": "READY"})",
           R"({"uid": "5", "name": ["e"], "state": "READY"})",
           R"({"uid": "6", "name": "f", "state": true})",
           R"({"uid": "7", "name": "g", "state": "ERROR", "url": 1, "meta": [],
               "createdAt": "1773480413589"})"});
    expectRequest(u"https://api.vercel.com/v6/deployments?limit=5"_s,
                  {{"Authorization", "Bearer key"}, {"Accept", "application/json"}});
    const auto epoch = QDateTime::fromMSecsSinceEpoch(0);
    const QList<VercelDeployment> kept{
        {"1", "site", "site-1.vercel.app", "READY", QDateTime::fromMSecsSinceEpoch(1773480413589),
         "Fix the door", "main"},
        {"3", "c", "", "CANCELED", epoch, {}, {}},
        {"7", "g", "", "ERROR", epoch, {}, {}},
    };
    EXPECT_EQ(services.vercelDeployments.value(), kept);
    cycle({deployment("8", "a", "QUEUED")});
    cycle({});
    EXPECT_EQ(services.vercelDeployments.value(), kept) << "nothing has ended since";
}

TEST_F(VercelPollerTest, ReactsOnceToTheNewestDeployment)
{
    const struct
    {
        const char *state;
        BotState mood;
        std::optional<PillBadge> badge;
        const char *sound;
    } rows[]{{"READY", BotState::finished, PillBadge::finished, "finish"},
             {"ERROR", BotState::error, PillBadge::error, "error"},
             {"CANCELED", BotState::error, PillBadge::error, "error"},
             {"READY", BotState::finished, std::nullopt, "finish"}};
    activate(pillId);
    int id = 0;
    for (const auto &row : rows) {
        state.focusId = row.badge ? u"integration_claude"_s : pillId;
        state.editTask(pillId, [](AgentTask &task) { task.stepIndex = 4; });
        const QByteArray newest = deployment(QByteArray::number(++id), "site", row.state);
        for (int again = 0; again < 2; ++again)
            cycle({newest, deployment("old", "b", "READY")});
        EXPECT_EQ(task(pillId).state, row.mood);
        EXPECT_EQ(task(pillId).steps, QStringList("site"));
        EXPECT_EQ(task(pillId).stepIndex, 0) << "the number of a step that has gone";
        EXPECT_EQ(task(pillId).pillBadge, row.badge);
        EXPECT_EQ(std::exchange(sounds.played, {}), QStringList(row.sound));
        EXPECT_EQ(std::exchange(reveals, 0), 1);

        queue.advance(59.9);
        EXPECT_EQ(task(pillId).state, row.mood);
        queue.advance(0.1);
        EXPECT_EQ(task(pillId).state, BotState::idle);
        EXPECT_EQ(task(pillId).steps, QStringList());
        EXPECT_EQ(task(pillId).pillBadge, std::nullopt);
    }
}

TEST_F(VercelPollerTest, LeavesAPillAloneThatSomebodyElseTookOver)
{
    activate(pillId);
    cycle({deployment("1", "site", "READY")});
    queue.advance(10);
    state.updateTask(pillId, BotState::working);
    const AgentTask taken = task(pillId);
    queue.advance(60);
    EXPECT_EQ(task(pillId), taken);

    cycle({deployment("2", "site", "READY")});
    state.toggleIntegration(pillId);
    queue.advance(60);
    EXPECT_FALSE(state.task(pillId));
}

TEST_F(VercelPollerTest, FillsTheListWithoutAReactionWhereNoneIsWanted)
{
    const auto newest = [&] { return services.vercelDeployments.value().value(0).id; };
    for (const bool hasPill : {false, true}) {
        if (hasPill)
            activate(pillId);
        cycle({deployment("1", "site", "READY")});
        EXPECT_EQ(newest(), "1");
        EXPECT_TRUE(sounds.played.isEmpty()) << "the deployment was seen before the pill came";
        EXPECT_EQ(reveals, 0);
    }
    state.vercelProjectFilter = QSet<QString>{u"other"_s};
    cycle({deployment("2", "site", "ERROR")});
    EXPECT_EQ(newest(), "2");
    EXPECT_TRUE(sounds.played.isEmpty()) << "the project is filtered out";

    cycle({deployment("3", "site", "ERROR"), deployment("4", "other", "READY")});
    EXPECT_EQ(task(pillId).steps, QStringList("other"));
    EXPECT_EQ(sounds.played, QStringList("finish"));
}

} // namespace
} // namespace tirlo
