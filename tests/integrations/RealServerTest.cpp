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

struct RealServerTest : PollerFixture
{
    RealServerTest()
    {
        keychain.set(u"n8n-url"_s, base);
        activate(u"integration_n8n"_s);
        server.respond = [](const LoopbackRequest &request) {
            return LoopbackAnswer{.body = goodBody(request.target, 7)};
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
    EXPECT_EQ(state.vercelDeployments.value().value(0).id, "7");
    EXPECT_EQ(state.stripeBalance.value(), 7);
    EXPECT_EQ(state.stripePayments.value().value(0).id, "7");
    EXPECT_EQ(state.githubStats.value(), (GitHubStats{7, 7}));
    EXPECT_EQ(state.resendEmails.value().value(0).id, "7");
    EXPECT_EQ(state.notionPages.value().value(0).id, "7");
    EXPECT_EQ(state.calcomBookings.value().value(0).id, 7);
    EXPECT_EQ(task("integration_n8n").steps, QStringList("w7"));
    EXPECT_TRUE(state.stripeLoaded && state.notionLoaded && state.calcomLoaded);
    takeLogLines();

    const auto lost = u"The connection to the server was lost."_s;
    const struct
    {
        LoopbackAnswer answer;
        std::optional<QString> error;
        QString logged;
    } rows[] = {
        {{.status = 401}, u"Invalid API key (401)"_s, u"HTTP 401 0 bytes"_s},
        {{.status = 403, .body = "no"}, u"API error 403"_s, u"HTTP 403 2 bytes"_s},
        {{.status = 204}, u"API error 204"_s, u"HTTP 204 0 bytes"_s},
        {{.body = "{\"data\": [", .manner = LoopbackManner::stopsHalfway},
         lost,
         u"Network error: "_s + lost},
        {{.body = "{}", .manner = LoopbackManner::hangs},
         u"The request timed out."_s,
         u"Network error: The request timed out."_s},
        {{.body = "<html>Sign in</html>"}, std::nullopt, u"Unexpected response shape"_s},
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
        // All services ask, Stripe twice; n8n asks again if the first answer is none.
        EXPECT_EQ(server.requests.size(), row.error ? 9u : 8u) << name;
        EXPECT_TRUE(takeLogLines().contains(row.logged)) << name;
    }

    server.respond = [](const LoopbackRequest &request) {
        return LoopbackAnswer{.body = goodBody(request.target, 7)};
    };
    pollAll();
    EXPECT_EQ(state.stripeError.value(), std::nullopt);
    EXPECT_EQ(state.notionError.value(), std::nullopt);
    EXPECT_EQ(state.calcomError.value(), std::nullopt);
    EXPECT_TRUE(takeLogLines().contains(u"Same id=7 — no change"_s));
}

} // namespace
} // namespace tirlo
