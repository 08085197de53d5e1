#include "integrations/StripePoller.h"

#include "PollerFixture.h"

namespace tirlo {
namespace {

const auto pillId = u"integration_stripe"_s;

QByteArray charge(const char *id, const char *more = "")
{
    return QStringLiteral(
               R"({"id": "%1", "amount": 1234, "currency": "eur", "status": "failed"%2})")
        .arg(QLatin1String(id), QLatin1String(more))
        .toUtf8();
}

QByteArray charges(const QByteArrayList &list)
{
    return "{\"object\": \"list\", \"data\": [" + list.join(',') + "]}";
}

QByteArray balanceOf(qint64 amount)
{
    return QByteArray(R"({"available": [{"currency": "usd", "amount": )")
        + QByteArray::number(amount) + "}]}";
}

struct StripePollerTest : PollerFixture
{
    void cycle(const HttpReply &balance, const HttpReply &charges)
    {
        poller.poll();
        ASSERT_TRUE(http.answer(balance));
        ASSERT_TRUE(http.answer(charges));
    }
    void cycle(qint64 balance, const QByteArrayList &list)
    {
        cycle({.status = 200, .body = balanceOf(balance)}, {.status = 200, .body = charges(list)});
    }

    QStringList shownIds() const
    {
        QStringList ids;
        for (const StripePayment &each : state.stripePayments.value())
            ids += each.id;
        return ids;
    }

    double shown() const { return poller.displayBalance().valueAt(queue.mediaTime()); }

    StripePoller poller{context};
};

TEST_F(StripePollerTest, AsksForBothWithTheKeyAsUserAndReadsThem)
{
    cycle({.status = 200, .body = R"({"object": "balance",
              "available": [{"amount": 9007199254740993, "currency": "gbp", "source_types": {}},
                            {"amount": "5"}],
              "pending": [{"amount": -1}, {"amount": 1.5}, {"amount": true}]})"},
          {.status = 200,
           .body = charges(
               {charge("1", R"(, "description": "Chair", "created": 1773480413.5)"),
                charge("2", R"(, "description": null, "billing_details": {"name": "Ada"})"),
                charge("3", R"(, "created": "x", "billing_details": [])"),
                R"({"id": "4", "amount": 1.5, "currency": "eur", "status": "x"})",
                R"({"id": "5", "amount": "1", "currency": "eur", "status": "x"})",
                R"({"id": "6", "amount": 1, "currency": null, "status": "x"})",
                R"({"id": "7", "amount": 1, "currency": "eur"})",
                R"({"id": 8, "amount": 1, "currency": "eur", "status": "x"})",
                R"({"id": "9", "amount": -9007199254740993, "currency": "eur", "status": "x"})"})});

    const Headers headers{{"Authorization", "Basic " + QByteArray("key:").toBase64()}};
    expectRequest(u"https://api.stripe.com/v1/balance"_s, headers);
    expectRequest(u"https://api.stripe.com/v1/charges?limit=3"_s, headers);

    EXPECT_EQ(state.stripeBalance.value(), 9007199254740992);
    EXPECT_EQ(state.stripeDisplayBalance.value(), 9007199254740992);
    EXPECT_EQ(state.stripeCurrency.value(), "gbp");
    EXPECT_TRUE(state.stripeLoaded);
    const QList<StripePayment> payments = state.stripePayments;
    EXPECT_EQ(shownIds(), QStringList({"1", "2", "3", "9"}));
    EXPECT_EQ(payments[0],
              (StripePayment{.id = "1",
                             .amount = 1234,
                             .currency = "eur",
                             .description = "Chair",
                             .createdAt = QDateTime::fromMSecsSinceEpoch(1773480413500),
                             .status = "failed"}));
    EXPECT_EQ(payments[1].description, "Ada");
    EXPECT_EQ(payments[2].description, std::nullopt);
    EXPECT_EQ(payments[2].createdAt, QDateTime::fromMSecsSinceEpoch(0));
    EXPECT_EQ(payments[3].amount, -9007199254740993);
}

TEST_F(StripePollerTest, CelebratesANewChargeButNotTheFirstLoad)
{
    activate(pillId);
    cycle(1000, {});
    cycle(1000, {charge("1"), charge("0")});
    EXPECT_TRUE(sound.played.isEmpty());
    EXPECT_EQ(state.stripeDisplayBalance.value(), 1000);

    cycle(2000, {charge("2"), charge("1"), charge("0")});
    EXPECT_EQ(sound.played, QStringList("finish"));
    EXPECT_EQ(reveals, 0);
    EXPECT_EQ(task(pillId).state, BotState::finished);
    EXPECT_EQ(task(pillId).steps, QStringList("12.34"));
    EXPECT_EQ(task(pillId).pillBadge, PillBadge::finished);
    EXPECT_EQ(shownIds(), QStringList({"2", "1", "0"}));

    // Two at once make one reaction, and the charge in between never comes up.
    cycle(2000, {charge("4", R"(, "description": "Lamp")"), charge("3"), charge("2")});
    EXPECT_EQ(task(pillId).steps, QStringList("Lamp"));
    EXPECT_EQ(shownIds(), QStringList({"4", "2", "1"}));
    cycle(2000, {charge("4")});
    cycle(2000, {});
    EXPECT_EQ(sound.played.size(), 2);

    queue.advance(60);
    EXPECT_EQ(task(pillId).state, BotState::idle);
    EXPECT_EQ(task(pillId).steps, QStringList());

    cycle(2000, {charge("5")});
    state.updateTask(pillId, BotState::error);
    queue.advance(60);
    EXPECT_EQ(task(pillId).state, BotState::error) << "somebody else's";
}

TEST_F(StripePollerTest, CountsUpTheBalanceOnShow)
{
    activate(pillId);
    cycle(1000, {charge("1")});
    cycle(3000, {charge("1")});
    EXPECT_EQ(state.stripeBalance.value(), 3000);
    EXPECT_EQ(state.stripeDisplayBalance.value(), 1000);

    cycle(3000, {charge("2")});
    queue.advance(0.49);
    EXPECT_EQ(shown(), 1000);
    EXPECT_TRUE(poller.displayBalance().isAtRest(queue.mediaTime()));

    bool wasOnItsWay = false;
    const auto watch = state.stripeDisplayBalance.addNotifier(
        [&] { wasOnItsWay = poller.displayBalance().target() == 3000; });
    queue.advance(0.01);
    EXPECT_EQ(state.stripeDisplayBalance.value(), 3000);
    EXPECT_TRUE(wasOnItsWay);
    EXPECT_EQ(shown(), 1000);
    queue.advance(0.6);
    EXPECT_GT(shown(), 2000) << "it slows down toward the end";
    EXPECT_LT(shown(), 3000);
    queue.advance(0.61);
    EXPECT_EQ(shown(), 3000);
    EXPECT_TRUE(poller.displayBalance().isAtRest(queue.mediaTime()));
}

TEST_F(StripePollerTest, WithoutAPillAChargeLeavesNoTraceButThatItWasSeen)
{
    cycle(0, {charge("1")});
    cycle(700, {charge("2"), charge("1")});
    EXPECT_EQ(shownIds(), QStringList("1"));
    EXPECT_EQ(state.stripeDisplayBalance.value(), 700) << "a zero follows at once";
    EXPECT_EQ(shown(), 700);

    activate(pillId);
    cycle(700, {charge("2"), charge("1")});
    EXPECT_TRUE(sound.played.isEmpty());
}

TEST_F(StripePollerTest, ReportsWhyThereIsNoBalanceUntilThereIsOne)
{
    const std::pair<HttpReply, std::optional<QString>> rows[] = {
        {{.error = "Offline."}, "Offline."},
        {{}, "No connection"},
        {{.status = 401}, "Invalid API key (401)"},
        {{.status = 403}, "Use secret key (sk_live_… not pk_live_…)"},
        {{.status = 500, .body = balanceOf(1)}, "API error 500"},
        // What can't be read changes nothing, nor the error of before.
        {{.status = 200, .body = R"({"available": [], "pending": 7})"}, "API error 500"},
        {{.status = 200, .body = R"({"available": [{"currency": 7, "amount": 7}]})"},
         "API error 500"},
        {{.status = 200, .body = R"({"available": ["x"], "pending": [{"currency": "eur"}]})"},
         std::nullopt},
    };
    for (const auto &[reply, error] : rows) {
        EXPECT_FALSE(state.stripeLoaded);
        cycle(reply, {.status = 500});
        EXPECT_EQ(state.stripeError.value(), error);
    }
    EXPECT_TRUE(state.stripeLoaded);
    EXPECT_EQ(state.stripeBalance.value(), 0);
    EXPECT_TRUE(shownIds().isEmpty());
}

} // namespace
} // namespace tirlo
