#include "integrations/StripePoller.h"

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
    void cycle(const QByteArray &balance, const QByteArrayList &charges, int chargesStatus = 200)
    {
        PollerFixture::cycle(poller, balance);
        ASSERT_TRUE(http.answer(
            {.status = chargesStatus, .body = "{\"data\": [" + charges.join(',') + "]}"}));
    }
    void cycle(qint64 amount, const QByteArrayList &charges)
    {
        cycle("{\"available\": [{\"currency\": \"usd\", \"amount\": " + QByteArray::number(amount)
                  + "}]}",
              charges);
    }

    QStringList shownIds() const
    {
        QStringList ids;
        for (const StripePayment &each : services.stripePayments.value())
            ids += each.id;
        return ids;
    }

    double shown() const { return poller.displayBalance().valueAt(queue.mediaTime()); }

    StripePoller poller{context};
};

TEST_F(StripePollerTest, AsksForBothWithTheKeyAsUserAndReadsThem)
{
    cycle(R"({"available": [{"amount": 9007199254740993, "currency": "gbp", "source_types": {}},
                            {"amount": "5"}],
              "pending": [{"amount": -1}, {"amount": 1.5}, {"amount": true}]})",
          {charge("1", R"(, "description": "Chair", "created": 1773480413.5)"),
           charge("2", R"(, "description": null, "billing_details": {"name": "Ada"})"),
           charge("3", R"(, "created": "x", "billing_details": [])"),
           R"({"id": "4", "amount": 1.5, "currency": "eur", "status": "x"})",
           R"({"id": "5", "amount": 1, "currency": null, "status": "x"})",
           R"({"id": "6", "amount": 1, "currency": "eur"})",
           R"({"id": 7, "amount": 1, "currency": "eur", "status": "x"})",
           R"({"id": "8", "amount": -9007199254740993, "currency": "eur", "status": "x"})"});

    const Headers headers{{"Authorization", "Basic " + QByteArray("key:").toBase64()}};
    expectRequest(u"https://api.stripe.com/v1/balance"_s, headers);
    expectRequest(u"https://api.stripe.com/v1/charges?limit=3"_s, headers);

    EXPECT_EQ(services.stripeBalance.value(), 9007199254740992);
    EXPECT_EQ(services.stripeDisplayBalance.value(), 9007199254740992);
    EXPECT_EQ(services.stripeCurrency.value(), "gbp");
    const auto epoch = QDateTime::fromMSecsSinceEpoch(0);
    const auto created = QDateTime::fromMSecsSinceEpoch(1773480413500);
    EXPECT_EQ(services.stripePayments.value(),
              (QList<StripePayment>{{"1", 1234, "eur", "Chair", created, "failed"},
                                    {"2", 1234, "eur", "Ada", epoch, "failed"},
                                    {"3", 1234, "eur", {}, epoch, "failed"},
                                    {"8", -9007199254740993, "eur", {}, epoch, "x"}}));
}

TEST_F(StripePollerTest, CelebratesANewChargeButNotTheFirstLoadAndCountsUpTheBalance)
{
    activate(pillId);
    cycle(1000, {});
    cycle(1000, {charge("1"), charge("0")});
    EXPECT_TRUE(sounds.played.isEmpty());
    EXPECT_EQ(services.stripeDisplayBalance.value(), 1000);

    cycle(3000, {charge("2"), charge("1"), charge("0")});
    EXPECT_EQ(sounds.played, QStringList("finish"));
    EXPECT_EQ(reveals, 0);
    EXPECT_EQ(task(pillId).steps, QStringList("12.34"));
    EXPECT_EQ(shownIds(), QStringList({"2", "1", "0"}));
    queue.advance(0.49);
    EXPECT_EQ(shown(), 1000);

    queue.advance(0.01);
    EXPECT_EQ(services.stripeDisplayBalance.value(), 3000);
    EXPECT_EQ(shown(), 1000);
    queue.advance(0.6);
    EXPECT_TRUE(shown() > 2000 && shown() < 3000) << "it slows down toward the end";
    queue.advance(0.61);
    EXPECT_EQ(shown(), 3000);

    // Two at once make one reaction, and the charge in between never comes up.
    cycle(3000, {charge("4", R"(, "description": "Lamp")"), charge("3"), charge("2")});
    EXPECT_EQ(task(pillId).steps, QStringList("Lamp"));
    EXPECT_EQ(shownIds(), QStringList({"4", "2", "1"}));
    cycle(3000, {charge("4")});
    cycle(3000, {});
    EXPECT_EQ(sounds.played.size(), 2);
}

TEST_F(StripePollerTest, WithoutAPillAChargeLeavesNoTraceButThatItWasSeen)
{
    cycle(0, {charge("1")});
    cycle(700, {charge("2"), charge("1")});
    EXPECT_EQ(shownIds(), QStringList("1"));
    EXPECT_EQ(services.stripeDisplayBalance.value(), 700) << "a zero follows at once";
    EXPECT_EQ(shown(), 700);

    activate(pillId);
    cycle(700, {charge("2"), charge("1")});
    EXPECT_TRUE(sounds.played.isEmpty());
}

TEST_F(StripePollerTest, ABalanceThatCannotBeReadIsNoneAndZeroIsOne)
{
    cycle(R"({"available": [{"currency": 7, "amount": 7}]})", {}, 500);
    EXPECT_FALSE(services.stripeLoaded);
    cycle(R"({"available": ["x"], "pending": [{"currency": "eur"}]})", {}, 500);
    EXPECT_TRUE(services.stripeLoaded);
    EXPECT_EQ(services.stripeBalance.value(), 0);
}

} // namespace
} // namespace tirlo
