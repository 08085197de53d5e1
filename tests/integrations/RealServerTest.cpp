#include "PollerFixture.h"
#include "integrations/ServicePollers.h"
#include "platform/linux/QtHttpClient.h"
#include "support/LoopbackServer.h"

#include <tuple>

namespace tirlo {
namespace {

/// Hands requests on to the network and counts those under way.
class CountingClient final : public HttpClient
{
public:
    explicit CountingClient(MainQueue &queue)
        : m_client(queue)
    {
    }

    void send(const HttpRequest &request, const QObject *owner,
              std::function<void(const HttpReply &)> done) override
    {
        ++pending;
        m_client.send(request, owner, [this, done](const HttpReply &reply) {
            done(reply);
            --pending;
        });
    }

    int pending = 0;

private:
    QtHttpClient m_client;
};

QByteArray goodBody(const QByteArray &target)
{
    const std::pair<const char *, const char *> bodies[] = {
        {"/v6/deployments", R"({"deployments": [{"uid": "d", "name": "site", "state": "READY"}]})"},
        {"/v1/balance", R"({"available": [{"currency": "usd", "amount": 700}]})"},
        {"/v1/charges",
         R"({"data": [{"id": "c", "amount": 7, "currency": "usd", "status": "succeeded"}]})"},
        {"/user/repos", R"([{"stargazers_count": 42}])"},
        {"/user", R"({"public_repos": 7})"},
        {"/emails", R"({"data": [{"id": "m", "created_at": "2026-03-14T09:26:53Z"}]})"},
        {"/v1/search", R"({"results": [{"id": "p", "last_edited_time": "2026-03-14T09:26:53Z"}]})"},
        {"/v2/bookings", R"({"data": [{"id": 7, "start": "2026-03-14T09:26:53Z"}]})"},
        {"/api/v1/executions/", R"({"name": "Orders"})"},
        {"/api/v1/executions", R"({"data": [{"id": 7, "status": "success"}]})"},
    };
    for (const auto &[path, body] : bodies) {
        if (target.startsWith(path))
            return body;
    }
    return {};
}

struct RealServerTest : PollerFixture
{
    RealServerTest()
    {
        keychain.set(u"n8n-url"_s, base);
        activate(u"integration_n8n"_s);
        server.respond = [](const LoopbackRequest &request) {
            return LoopbackAnswer{.body = goodBody(request.target)};
        };
    }

    /// Runs a cycle of each service to its end, one by one; time goes on meanwhile if `timePasses`.
    void pollAll(bool timePasses = false)
    {
        server.requests.clear();
        for (Poller *each : std::initializer_list<Poller *>{
                 &pollers.n8n, &pollers.vercel, &pollers.resend, &pollers.github, &pollers.stripe,
                 &pollers.calcom, &pollers.notion}) {
            each->poll();
            ASSERT_TRUE(eventually([&] {
                if (timePasses)
                    queue.advance(2);
                return client.pending == 0;
            }));
        }
    }

    auto stored() const
    {
        return std::tuple(state.vercelDeployments.value(), state.stripeBalance.value(),
                          state.stripePayments.value(), state.githubStats.value(),
                          state.resendEmails.value(), state.resendTotal.value(),
                          state.notionPages.value(), state.calcomBookings.value());
    }

    LoopbackServer server;
    const QString base = server.url().toString().chopped(1);
    CountingClient client{queue};
    ServicePollers pollers{{state,
                            notifications,
                            sound,
                            queue,
                            client,
                            keychain,
                            log,
                            {base, base, base, base, base, base}}};
};

TEST_F(RealServerTest, EveryServiceIsReadAndEveryFailureLeavesTheStoreAsItWas)
{
    pollAll();
    const auto good = stored();
    EXPECT_EQ(state.vercelDeployments.value().value(0).id, "d");
    EXPECT_EQ(state.stripeBalance.value(), 700);
    EXPECT_EQ(state.stripePayments.value().value(0).id, "c");
    EXPECT_EQ(state.githubStats.value(), (GitHubStats{7, 42}));
    EXPECT_EQ(state.resendEmails.value().value(0).id, "m");
    EXPECT_EQ(state.notionPages.value().value(0).id, "p");
    EXPECT_EQ(state.calcomBookings.value().value(0).id, 7);
    EXPECT_EQ(pill("integration_n8n").steps, QStringList("Orders"));
    EXPECT_TRUE(state.stripeLoaded && state.notionLoaded && state.calcomLoaded);
    takeLogLines();

    const auto lost = u"The connection to the server was lost."_s;
    const struct
    {
        LoopbackAnswer answer;
        std::optional<QString> error;
        /// Requests of all services; n8n asks twice if the first answer is no 200.
        size_t requests;
        QString logged;
    } rows[] = {
        {{.status = 401}, u"Invalid API key (401)"_s, 9, u"HTTP 401 0 bytes"_s},
        {{.status = 403, .body = "no"}, u"API error 403"_s, 9, u"HTTP 403 2 bytes"_s},
        {{.status = 500}, u"API error 500"_s, 9, u"HTTP 500 0 bytes"_s},
        {{.status = 204}, u"API error 204"_s, 9, u"HTTP 204 0 bytes"_s},
        {{.body = "{\"data\": [", .manner = LoopbackManner::stopsHalfway},
         lost,
         9,
         u"Network error: "_s + lost},
        {{.body = "{}", .manner = LoopbackManner::hangs},
         u"The request timed out."_s,
         9,
         u"Network error: The request timed out."_s},
        {{.body = "<html>Sign in</html>"}, std::nullopt, 8, u"Unexpected response shape"_s},
        {{.body = "{\"data\": [7"}, std::nullopt, 8, u"Unexpected response shape"_s},
    };
    for (const auto &row : rows) {
        server.respond = [&row](const LoopbackRequest &) { return row.answer; };
        for (auto *error : {&state.stripeError, &state.notionError, &state.calcomError})
            *error = std::nullopt;
        pollAll(row.answer.manner == LoopbackManner::hangs);

        const std::string name = row.logged.toStdString();
        EXPECT_EQ(stored(), good) << name;
        EXPECT_EQ(state.notionError.value(), row.error) << name;
        EXPECT_EQ(state.calcomError.value(), row.error) << name;
        const bool isForbidden = row.answer.status == 403;
        EXPECT_EQ(state.stripeError.value(),
                  isForbidden ? u"Use secret key (sk_live_… not pk_live_…)"_s : row.error)
            << name;
        EXPECT_EQ(server.requests.size(), row.requests) << name;
        EXPECT_TRUE(takeLogLines().contains(row.logged)) << name;
    }

    server.respond = [](const LoopbackRequest &request) {
        return LoopbackAnswer{.body = goodBody(request.target)};
    };
    pollAll();
    EXPECT_EQ(state.stripeError.value(), std::nullopt);
    EXPECT_EQ(state.notionError.value(), std::nullopt);
    EXPECT_EQ(state.calcomError.value(), std::nullopt);
    EXPECT_TRUE(takeLogLines().contains(u"Same id=7 — no change"_s));
}

TEST_F(RealServerTest, AServerThatIsNotThereOrHasNoSchemeIsANetworkError)
{
    keychain.set(u"n8n-url"_s, u"n8n.test/team"_s);
    pollers.n8n.poll();
    ASSERT_TRUE(eventually([&] { return client.pending == 0; }));
    const QStringList lines = takeLogLines();
    ASSERT_EQ(lines.size(), 5);
    EXPECT_EQ(lines[0], "Polling n8n.test/team/api/v1/executions?limit=1&includeData=false");
    EXPECT_TRUE(lines[1].startsWith(u"Network error: "_s) && lines[1].size() > 20)
        << lines[1].toStdString();
    EXPECT_EQ(lines[4], "All list endpoints failed");
    EXPECT_TRUE(server.requests.empty());
}

} // namespace
} // namespace tirlo
