#include "integrations/ServicePollers.h"

#include "PollerFixture.h"

#include <array>
#include <tuple>

namespace tirlo {
namespace {

struct ServicePollersTest : PollerFixture
{
    ServicePollersTest()
    {
        for (const char *id : {"integration_vercel", "integration_stripe", "integration_n8n"})
            activate(id);
    }

    static void pollAll(ServicePollers &pollers)
    {
        for (Poller *each : std::initializer_list<Poller *>{
                 &pollers.n8n, &pollers.vercel, &pollers.resend, &pollers.github, &pollers.stripe,
                 &pollers.calcom, &pollers.notion})
            each->poll();
    }

    auto stored() const
    {
        return std::tuple(services.vercelDeployments.value(), services.stripeBalance.value(),
                          services.stripePayments.value(), services.githubStats.value(),
                          services.resendEmails.value(), services.resendTotal.value(),
                          services.notionPages.value(), services.calcomBookings.value());
    }

    auto errors() const
    {
        return std::array{services.stripeError.value(), services.notionError.value(),
                          services.calcomError.value()};
    }
};

TEST_F(ServicePollersTest, EachKeepsItsIntervalAndBeginsAnewAfterASleep)
{
    ServicePollers pollers(context);
    pollers.start();
    // How often each was asked meanwhile, though nobody answers.
    const auto askedIn = [&](double seconds) {
        http.requests.clear();
        queue.advance(seconds);
        QMap<QString, int> counts;
        for (const HttpRequest &request : http.requests)
            ++counts[request.url.path()];
        return counts;
    };
    QMap<QString, int> hourly{
        {"/api/v1/executions", 240}, {"/v6/deployments", 120}, {"/v1/balance", 120},
        {"/v1/charges", 120},        {"/emails", 60},          {"/user", 12},
        {"/v2/bookings", 12},        {"/v1/search", 12}};
    EXPECT_EQ(askedIn(9.5).keys(), hourly.keys());
    EXPECT_EQ(askedIn(3600), hourly);
    queue.sleep(100'000);
    EXPECT_EQ(askedIn(15 + 9 + 1).keys(), hourly.keys());

    // Without keys only the timers go on; a blank one is none.
    for (const QString &item : serviceKeys)
        keychain.set(item, QString());
    secrets.items = {{"vercel-token", ""}};
    keychain.load();
    EXPECT_TRUE(askedIn(3600).isEmpty());
}

/// A web that never answers, so that each request lasts until its time is over.
class HangingWeb final : public HttpClient
{
public:
    explicit HangingWeb(MainQueue &queue)
        : m_queue(queue)
    {
    }

    void send(const HttpRequest &request, const QObject *owner,
              std::function<void(const HttpReply &)> done) override
    {
        mostPending = std::max(mostPending, ++m_pending);
        m_queue.after(request.timeout, owner, [this, done] {
            --m_pending;
            done({.error = u"The request timed out."_s});
        });
    }

    int mostPending = 0;

private:
    MainQueue &m_queue;
    int m_pending = 0;
};

TEST_F(ServicePollersTest, HangingRequestsDoNotPileUp)
{
    HangingWeb web(queue);
    ServicePollers pollers({state, notifications, sounds, queue, web, keychain, log});
    pollers.start();
    queue.advance(24 * 60 * 60);
    // One a service, and those of two that ask for more than one thing.
    EXPECT_GT(web.mostPending, 7);
    EXPECT_LE(web.mostPending, 9);
}

TEST_F(ServicePollersTest, EveryFailureLeavesTheStoreAsItWas)
{
    ServicePollers pollers(context);
    // A cycle of each service, told how many requests it took.
    const auto cycleWith = [&](const auto &replyTo) {
        http.requests.clear();
        pollAll(pollers);
        std::size_t count = 0;
        while (count < http.requests.size())
            http.answer(replyTo(http.requests[count++].url.path()));
        return count;
    };
    const auto fine
        = [](const QString &path) { return HttpReply{.status = 200, .body = goodBody(path, 7)}; };
    cycleWith([](const QString &) { return HttpReply{.status = 500}; });
    EXPECT_FALSE(services.stripeLoaded || services.notionLoaded || services.calcomLoaded);
    cycleWith(fine);
    EXPECT_TRUE(services.stripeLoaded && services.notionLoaded && services.calcomLoaded);
    const auto good = stored();

    const struct
    {
        int status;
        QString broken;
        QString told;
    } failures[]{{401, "", "Invalid API key (401)"}, {403, "", "API error 403"},
                 {204, "", "API error 204"},         {0, "Offline.", "Offline."},
                 {0, "", "No connection"},           {200, "Cut off.", "Cut off."}};
    for (const auto &row : failures) {
        // All services ask, one of them twice, and another one at its second address as well.
        EXPECT_EQ(cycleWith([&](const QString &path) {
                      return HttpReply{row.status, goodBody(path, 8), row.broken};
                  }),
                  9U);
        EXPECT_EQ(stored(), good) << row.told.toStdString();
        const auto told = errors();
        EXPECT_EQ(told[0],
                  row.status == 403 ? u"Use secret key (sk_live_… not pk_live_…)"_s : row.told);
        EXPECT_EQ(told[1], row.told);
        EXPECT_EQ(told[2], row.told);
    }

    // Answers that are no answer, of status 200 all the same, change nothing: nor the errors.
    const auto before = errors();
    for (const char *body :
         {"", "<html>Sign in</html>", "{}", "[7]", R"({"data": [)",
          R"({"data": {}, "results": "x", "deployments": {}, "available": [], "pending": 7})",
          R"({"data": [7], "results": [null], "deployments": ["x"], "available": ["x"]})"}) {
        takeLogLines();
        cycleWith([&](const QString &) { return HttpReply{.status = 200, .body = body}; });
        EXPECT_EQ(stored(), good) << body;
        EXPECT_EQ(errors(), before) << body;
        EXPECT_TRUE(takeLogLines().contains(u"Unexpected response shape"_s)) << body;
    }
    cycleWith(fine);
    EXPECT_EQ(errors(), decltype(before)());
    EXPECT_TRUE(takeLogLines().contains(u"Same id=7 — no change"_s));
}

} // namespace
} // namespace tirlo
