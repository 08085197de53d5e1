#include "integrations/ServicePollers.h"
#include "core/ServiceData.h"

#include "PollerFixture.h"
#include "platform/linux/QtHttpClient.h"
#include "support/LoopbackServer.h"

#include <QMap>

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
        return std::tuple(
            state.services().vercelDeployments.value(), state.services().stripeBalance.value(),
            state.services().stripePayments.value(), state.services().githubStats.value(),
            state.services().resendEmails.value(), state.services().resendTotal.value(),
            state.services().notionPages.value(), state.services().calcomBookings.value());
    }

    auto errors() const
    {
        return std::array{state.services().stripeError.value(),
                          state.services().notionError.value(),
                          state.services().calcomError.value()};
    }
};

TEST_F(ServicePollersTest, EachKeepsItsIntervalAndBeginsAnewAfterASleep)
{
    using Counts = QMap<QString, int>;
    ServicePollers pollers(context);
    pollers.start();
    // How often each was asked meanwhile, though nobody answers.
    const auto askedIn = [&](double seconds) {
        http.requests.clear();
        queue.advance(seconds);
        Counts counts;
        for (const HttpRequest &request : http.requests)
            ++counts[request.url.path()];
        return counts;
    };
    Counts once{{"/api/v1/executions", 1}, {"/v6/deployments", 1}, {"/v1/balance", 1},
                {"/v1/charges", 1},        {"/emails", 1},         {"/user", 1},
                {"/v2/bookings", 1},       {"/v1/search", 1}};
    EXPECT_EQ(askedIn(9.5), once);
    EXPECT_EQ(askedIn(3600),
              (Counts{{"/api/v1/executions", 240},
                      {"/v6/deployments", 120},
                      {"/v1/balance", 120},
                      {"/v1/charges", 120},
                      {"/emails", 60},
                      {"/user", 12},
                      {"/v2/bookings", 12},
                      {"/v1/search", 12}}));
    queue.sleep(100'000);
    once["/api/v1/executions"] = 2;
    EXPECT_EQ(askedIn(15 + 9 + 1), once);

    // Without keys only the timers go on; a blank one is none.
    for (const QString &item : serviceKeys)
        keychain.set(item, QString());
    secrets.items = {{"vercel-token", ""}};
    keychain.load();
    EXPECT_EQ(askedIn(3600), Counts());
}

TEST_F(ServicePollersTest, EveryServiceIsReadFromAServer)
{
    LoopbackServer server;
    server.respond = [](const LoopbackRequest &request) {
        return LoopbackAnswer{.body = goodBody(request.target, 7)};
    };
    const QString base = server.url().toString().chopped(1);
    keychain.set(u"n8n-url"_s, base);
    QtHttpClient client{queue};
    ServicePollers pollers({state,
                            notifications,
                            sounds,
                            queue,
                            client,
                            keychain,
                            log,
                            {base, base, base, base, base, base}});
    pollAll(pollers);
    EXPECT_TRUE(eventually([&] {
        return state.services().vercelDeployments.value().value(0).id == "7"
            && state.services().stripeBalance == 7
            && state.services().stripePayments.value().value(0).id == "7"
            && state.services().githubStats.value() == GitHubStats{7, 7}
        && state.services().resendEmails.value().value(0).id == "7"
            && state.services().notionPages.value().value(0).id == "7"
            && state.services().calcomBookings.value().value(0).id == 7
            && task("integration_n8n").steps == QStringList("w7");
    }));
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
    EXPECT_FALSE(state.services().stripeLoaded || state.services().notionLoaded
                 || state.services().calcomLoaded);
    cycleWith(fine);
    EXPECT_TRUE(state.services().stripeLoaded && state.services().notionLoaded
                && state.services().calcomLoaded);
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
