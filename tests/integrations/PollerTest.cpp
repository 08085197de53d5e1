#include "integrations/Poller.h"

#include "PollerFixture.h"

namespace tirlo {
namespace {

/// Asks for a text and adds it to those that came.
class TextPoller final : public Poller
{
public:
    TextPoller(const PollerContext &context, QByteArrayList &texts)
        : Poller(context, {.firstAfterStart = 5, .interval = 30})
        , m_texts(texts)
    {
    }

    QList<double> times;

private:
    void runCycle() override
    {
        times.append(m_context.queue.mediaTime());
        fetch(
            {}, [](const QByteArray &body) { return body; },
            [this](const QByteArray &body) { m_texts.append(body); },
            [this](const HttpReply &) { m_texts.append("failed"); });
    }

    QByteArrayList &m_texts;
};

struct PollerTest : PollerFixture
{
    QByteArrayList texts;
    TextPoller poller{context, texts};
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
    const HttpReply one{.status = 200, .body = "1"};
    const HttpReply two{.status = 200, .body = "2"};
    const HttpReply failure{.status = 500};
    const struct
    {
        HttpReply older, newer;
        bool newerComesFirst;
        QByteArrayList texts;
    } rows[] = {{one, two, false, {"1", "2"}},
                {one, two, true, {"2"}},
                {failure, two, true, {"2"}},
                {one, failure, true, {"failed"}}};
    for (const auto &row : rows) {
        texts.clear();
        poller.poll();
        poller.poll();
        ASSERT_TRUE(http.answer(row.newerComesFirst ? row.newer : row.older, row.newerComesFirst));
        ASSERT_TRUE(http.answer(row.newerComesFirst ? row.older : row.newer));
        EXPECT_EQ(texts, row.texts);
    }
}

} // namespace
} // namespace tirlo
