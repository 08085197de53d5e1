#include "integrations/StripePoller.h"
#include "core/ServiceData.h"

#include "PollerFixture.h"

namespace tirlo {
namespace {

const auto pillId = u"integration_stripe"_s;

QByteArray charge(const QByteArray &id, const QByteArray &more = "")
{
    return R"({"id": ")" + id + R"(", "amount": 1234, "currency": "eur", "status": "failed")" + more
        + '}';
}

struct StripePollerTest : PollerFixture
{
    void cycle(const QByteArray &balance, const HttpReply &charges)
    {
        PollerFixture::cycle(poller, balance);
        ASSERT_TRUE(http.answer(charges));
    }
    void cycle(qint64 amount, const QByteArrayList &list)
    {
        cycle(R"({"available": [{"currency": "usd", "amount": )" + QByteArray::number(amount)
                  + "}]}",
              {.status = 200, .body = "{\"data\": [" + list.join(',') + "]}"});
    }

    QStringList shownIds() const
    {
        QStringList ids;
        for (const StripePayment &each : state.services().stripePayments.value())
            ids += each.id;
        return ids;
    }

    double shown() const { return poller.displayBalance().valueAt(queue.mediaTime()); }

    StripePoller poller{context};
};

TEST_F(StripePollerTest, AsksForBothWithTheKeyAsUserAndReadsThem)
{
    const QByteArrayList list{
        charge("1", R"(, "description": "Chair", "created": 1773480413.5)"),
        charge("2", R"(, "description": null, "billing_details": {"name": "Ada"})"),
        charge("3", R"(, "created": "x", "billing_details": [])"),
        R"({"id": "4", "amount": 1.5, "currency": "eur", "status": "x"})",
        R"({"id": "5", "amount": 1, "currency": null, "status": "x"})",
        R"({"id": "6", "amount": 1, "currency": "eur"})",
        R"({"id": 7, "amount": 1, "currency": "eur", "status": "x"})",
        R"({"id": "8", "amount": -9007199254740993, "currency": "eur", "status": "x"})"};
    cycle(R"({"available": [{"amount": 9007199254740993, "currency": "gbp", "source_types": {}},
                            {"amount": "5"}],
              "pending": [{"amount": -1}, {"amount": 1.5}, {"amount": true}]})",
          {.status = 200, .body = "{\"data\": [" + list.join(',') + "]}"});

    const Headers headers{{"Authorization", "Basic " + QByteArray("key:").toBase64()}};
    expectRequest(u"https://api.stripe.com/v1/balance"_s, headers);
    expectRequest(u"https://api.stripe.com/v1/charges?limit=3"_s, headers);

    EXPECT_EQ(state.services().stripeBalance.value(), 9007199254740992);
    EXPECT_EQ(state.services().stripeDisplayBalance.value(), 9007199254740992);
    EXPECT_EQ(state.services().stripeCurrency.value(), "gbp");
    EXPECT_TRUE(state.services().stripeLoaded);
    const QList<StripePayment> payments = state.services().stripePayments;
    EXPECT_EQ(shownIds(), QStringList({"1", "2", "3", "8"}));
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
    EXPECT_TRUE(sounds.played.isEmpty());
    EXPECT_EQ(state.services().stripeDisplayBalance.value(), 1000);

    cycle(2000, {charge("2"), charge("1"), charge("0")});
    EXPECT_EQ(sounds.played, QStringList("finish"));
    EXPECT_EQ(reveals, 0);
    EXPECT_EQ(task(pillId).steps, QStringList("12.34"));
    EXPECT_EQ(shownIds(), QStringList({"2", "1", "0"}));

    // Two at once make one reaction, and the charge in between never comes up.
    cycle(2000, {charge("4", R"(, "description": "Lamp")"), charge("3"), charge("2")});
    EXPECT_EQ(task(pillId).steps, QStringList("Lamp"));
    EXPECT_EQ(shownIds(), QStringList({"4", "2", "1"}));
    cycle(2000, {charge("4")});
    cycle(2000, {});
    EXPECT_EQ(sounds.played.size(), 2);

    queue.advance(60);
    EXPECT_EQ(task(pillId).state, BotState::idle);
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
    EXPECT_EQ(state.services().stripeBalance.value(), 3000);
    EXPECT_EQ(state.services().stripeDisplayBalance.value(), 1000);

    cycle(3000, {charge("2")});
    queue.advance(0.49);
    EXPECT_EQ(shown(), 1000);
    EXPECT_TRUE(poller.displayBalance().isAtRest(queue.mediaTime()));

    bool wasOnItsWay = false;
    const auto watch = state.services().stripeDisplayBalance.addNotifier(
        [&] { wasOnItsWay = poller.displayBalance().target() == 3000; });
    queue.advance(0.01);
    EXPECT_EQ(state.services().stripeDisplayBalance.value(), 3000);
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
    EXPECT_EQ(state.services().stripeDisplayBalance.value(), 700) << "a zero follows at once";
    EXPECT_EQ(shown(), 700);

    activate(pillId);
    cycle(700, {charge("2"), charge("1")});
    EXPECT_TRUE(sounds.played.isEmpty());
}

TEST_F(StripePollerTest, ABalanceThatCannotBeReadIsNoneAndZeroIsOne)
{
    cycle(R"({"available": [{"currency": 7, "amount": 7}]})", {.status = 500});
    EXPECT_FALSE(state.services().stripeLoaded);
    cycle(R"({"available": ["x"], "pending": [{"currency": "eur"}]})", {.status = 500});
    EXPECT_TRUE(state.services().stripeLoaded);
    EXPECT_EQ(state.services().stripeBalance.value(), 0);
    EXPECT_TRUE(shownIds().isEmpty());
}

} // namespace
} // namespace tirlo
