#include "integrations/Poller.h"

#include "PollerFixture.h"

namespace tirlo {
namespace {

/// Notes when its cycles run.
class CountingPoller final : public Poller
{
public:
    explicit CountingPoller(const PollerContext &context)
        : Poller(context, {.firstAfterStart = 5, .interval = 30})
    {
    }

    void poll() override { times.append(m_context.queue.mediaTime()); }

    [[nodiscard]] bool hasKey() const { return key(QLatin1String("vercel-token")).has_value(); }

    QList<double> times;
};

struct PollerTest : PollerFixture
{
    CountingPoller poller{context};
};

TEST_F(PollerTest, RunsItsCyclesFromTheFirstStartOn)
{
    queue.advance(100);
    poller.start();
    queue.advance(1);
    poller.start();
    queue.advance(94);
    EXPECT_EQ(poller.times, QList<double>({105, 135, 165, 195}));
    poller.start();
    queue.advance(30);
    EXPECT_EQ(poller.times.last(), 225);
    EXPECT_EQ(poller.times.size(), 5);
}

TEST_F(PollerTest, PollsOnceAfterASleepAndKeepsItsRhythm)
{
    poller.start();
    queue.advance(10);
    queue.sleep(1000);
    queue.advance(60);
    EXPECT_EQ(poller.times, QList<double>({5, 1010, 1025, 1055}));
}

TEST_F(PollerTest, ReadsItsKeyAnew)
{
    EXPECT_TRUE(poller.hasKey());
    keychain.set(u"vercel-token"_s, QString());
    EXPECT_FALSE(poller.hasKey());

    MemorySecretStore blank;
    blank.items = {{"vercel-token", ""}};
    const KeychainStore blankKeychain(blank);
    CountingPoller other({state, notifications, sound, queue, http, blankKeychain, log});
    EXPECT_FALSE(other.hasKey()) << "an empty item is no key";
}

TEST_F(PollerTest, NothingRunsAfterItsEnd)
{
    auto gone = std::make_unique<CountingPoller>(context);
    gone->start();
    gone.reset();
    queue.advance(100);
}

} // namespace
} // namespace tirlo
