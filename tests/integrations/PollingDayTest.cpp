#include "PollerFixture.h"
#include "core/ServiceData.h"
#include "integrations/ServicePollers.h"

#include <QMap>

#include <random>

namespace tirlo {
namespace {

/// The web on a bad day: answers late, wrongly, in part or not at all, the same way at each run.
///
/// Everything in a whole answer carries one number, so that a mix of two answers shows.
class MoodyWeb final : public HttpClient
{
public:
    explicit MoodyWeb(MainQueue &queue)
        : m_queue(queue)
    {
    }

    void send(const HttpRequest &request, const QObject *owner,
              std::function<void(const HttpReply &)> done) override
    {
        const QString path = request.url.path();
        ++asked[path];
        mostPending = std::max(mostPending, ++pending);
        HttpReply reply = outcomeFor(path);
        const bool hangs = reply.status == 0 && m_random() % 2 == 0;
        const double delay
            = hangs ? request.timeout : std::uniform_real_distribution(0.05, 9.9)(m_random);
        answered[path] += reply.status == 200 && !QJsonDocument::fromJson(reply.body).isNull();
        m_queue.after(delay, nullptr, [this, reply, done, life = QPointer(owner)] {
            --pending;
            if (life)
                done(reply);
            if (afterAnswer)
                afterAnswer();
        });
    }

    QMap<QString, int> asked;
    /// Of those, the ones that were answered with whole JSON.
    QMap<QString, int> answered;
    int pending = 0;
    int mostPending = 0;
    std::function<void()> afterAnswer;

private:
    HttpReply outcomeFor(const QString &path)
    {
        const QByteArray body = goodBody(path, ++m_number);
        switch (m_random() % 8) {
        case 0:
            return {.error = u"Offline."_s};
        case 1:
            return {};
        case 2:
            return {.status = std::array{401, 403, 429, 500, 503}[m_random() % 5], .body = body};
        case 3:
            return {.status = 200, .body = body.left(m_random() % body.size())};
        case 4:
            return {.status = 200, .body = "<html>Please sign in</html>"};
        default:
            return {.status = 200, .body = body};
        }
    }

    MainQueue &m_queue;
    std::mt19937 m_random{20260314};
    int m_number = 0;
};

/// True when all of the values are the same.
bool agree(const QStringList &values)
{
    return values.count(values.value(0)) == values.size();
}

struct PollingDayTest : PollerFixture
{ };

TEST_F(PollingDayTest, KeepsToTheIntervalsAndNeverMixesAnswers)
{
    MoodyWeb web(queue);
    ServicePollers pollers({state, notifications, sounds, queue, web, keychain, log});
    for (const QString &id :
         {u"integration_vercel"_s, u"integration_stripe"_s, u"integration_n8n"_s})
        activate(id);

    int mixed = 0;
    web.afterAnswer = [&] {
        const auto deployments = state.services().vercelDeployments.value();
        const auto emails = state.services().resendEmails.value();
        const auto pages = state.services().notionPages.value();
        const auto bookings = state.services().calcomBookings.value();
        QStringList vercel, resend, notion, calcom;
        for (const auto &each : deployments)
            vercel += {each.id, each.url};
        for (const auto &each : emails)
            resend += {each.id, QString::number(state.services().resendTotal.value().value_or(-1))};
        for (const auto &each : pages)
            notion += each.id;
        for (const auto &each : bookings)
            calcom += {each.title, QString::number(each.id)};
        const bool balanceAgrees = !state.services().stripeBalance.value()
            || state.services().stripeCurrency.value()
                == u"c%1"_s.arg(state.services().stripeBalance.value());
        mixed += !agree(vercel) || !agree(resend) || !agree(notion) || !agree(calcom)
            || !balanceAgrees || deployments.size() % 2 || emails.size() % 2 || pages.size() % 2
            || bookings.size() % 2 || state.services().stripePayments.value().size() > 3
            || state.services().notionLoaded.value() == pages.isEmpty()
            || state.services().calcomLoaded.value() == bookings.isEmpty();
    };

    pollers.start();
    const int day = 24 * 60 * 60;
    queue.advance(day);

    const auto cycles = [](int first, int interval) { return (day - first) / interval + 1; };
    EXPECT_EQ(web.asked["/api/v1/executions"], cycles(3, 15));
    EXPECT_EQ(web.asked["/v6/deployments"], cycles(5, 30));
    EXPECT_EQ(web.asked["/v1/balance"], cycles(6, 30));
    EXPECT_EQ(web.asked["/v1/charges"], cycles(6, 30));
    EXPECT_EQ(web.asked["/emails"], cycles(6, 60));
    EXPECT_EQ(web.asked["/user"], cycles(7, 300));
    EXPECT_EQ(web.asked["/user/repos"], web.answered["/user"]);
    EXPECT_EQ(web.asked["/v2/bookings"], cycles(8, 300));
    EXPECT_EQ(web.asked["/v1/search"], cycles(9, 300));

    EXPECT_EQ(mixed, 0);
    EXPECT_LE(web.mostPending, 12) << "hanging requests don't pile up";
    EXPECT_TRUE(state.services().githubStats.value());
    EXPECT_TRUE(state.services().stripeLoaded && state.services().notionLoaded
                && state.services().calcomLoaded);
    EXPECT_GT(reveals, 1000);

    // Whatever has run before, after a sleep all begin anew, each just once.
    const auto awake = web.asked;
    queue.sleep(day);
    queue.advance(15 + 9 + 1);
    for (const auto *path : {"/v1/balance", "/v1/charges", "/emails", "/user", "/v2/bookings"})
        EXPECT_EQ(web.asked[path], awake[path] + 1) << path;

    // Without keys only the timers go on; a blank one is none.
    for (const QString &item : serviceKeys)
        keychain.set(item, QString());
    secrets.items = {{"vercel-token", ""}};
    keychain.load();
    queue.advance(100);
    const auto before = web.asked;
    queue.advance(3600);
    EXPECT_EQ(web.asked, before);
    EXPECT_EQ(task("integration_vercel").state, BotState::idle);
    EXPECT_EQ(task("integration_n8n").steps, QStringList());
}

} // namespace
} // namespace tirlo
