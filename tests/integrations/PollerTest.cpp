#include "integrations/Poller.h"

#include "PollerFixture.h"

namespace tirlo {
namespace {

/// Asks for a text and keeps it.
class TextPoller final : public Poller
{
public:
    explicit TextPoller(const PollerContext &context)
        : Poller(context, {.firstAfterStart = 5, .interval = 30})
    {
    }

    QList<double> times;
    QByteArrayList texts;

private:
    void runCycle() override
    {
        times.append(m_context.queue.mediaTime());
        fetch(
            {}, [](const QByteArray &body) { return body; },
            [this](const QByteArray &body) { texts.append(body); },
            [this](const HttpReply &) { texts.append("failed"); });
    }
};

struct PollerTest : PollerFixture
{
    TextPoller poller{context};
};

TEST_F(PollerTest, BeginsAnewAfterASleepAndOnlyThen)
{
    queue.sleep(1000);
    poller.wake();
    poller.start();
    queue.advance(10);
    poller.wake();
    EXPECT_EQ(poller.times, QList<double>({5}));

    queue.sleep(1000);
    queue.advance(1);
    poller.wake();
    queue.advance(1);
    poller.wake();
    queue.advance(60);
    EXPECT_EQ(poller.times, QList<double>({5, 16, 46}));

    queue.sleep(1000);
    queue.advance(5);
    poller.wake();
    queue.advance(20);
    EXPECT_EQ(poller.times.mid(3), QList<double>({76})) << "a cycle came before the watch did";
}

TEST_F(PollerTest, AnOlderAnswerDoesNotReplaceANewerOne)
{
    const struct
    {
        HttpReply older, newer;
        bool newerComesFirst;
        QByteArrayList texts;
    } rows[] = {
        {{.status = 200, .body = "1"}, {.status = 200, .body = "2"}, false, {"1", "2"}},
        {{.status = 200, .body = "1"}, {.status = 200, .body = "2"}, true, {"2"}},
        {{.status = 500}, {.status = 200, .body = "2"}, true, {"2"}},
        {{.status = 200, .body = "1"}, {.status = 500}, true, {"failed"}},
    };
    for (const auto &row : rows) {
        poller.texts.clear();
        poller.poll();
        poller.poll();
        ASSERT_TRUE(http.answer(row.newerComesFirst ? row.newer : row.older, row.newerComesFirst));
        ASSERT_TRUE(http.answer(row.newerComesFirst ? row.older : row.newer));
        EXPECT_EQ(poller.texts, row.texts);
    }
}

} // namespace
} // namespace tirlo
