#include "platform/BackgroundWorker.h"

#include "support/ManualQueue.h"

#include <QTest>

#include <gtest/gtest.h>

#include <future>
#include <optional>
#include <string>

using namespace tirlo;

namespace {

TEST(BackgroundWorkerTest, WorksInOrderAndToTheEndOnAnotherThread)
{
    std::optional<BackgroundWorker> worker(std::in_place, BackgroundWorker::AtEnd::finish);
    std::string order;
    std::thread::id thread;
    for (char c = 'a'; c <= 'z'; ++c) {
        worker->post([&, c] {
            order += c;
            thread = std::this_thread::get_id();
        });
    }
    worker->post([&, &self = *worker] { self.post([&] { order += '!'; }); });
    worker.reset();
    EXPECT_EQ(order, "abcdefghijklmnopqrstuvwxyz!");
    EXPECT_NE(thread, std::this_thread::get_id());
}

TEST(BackgroundWorkerTest, DropsWhatWaitsAndTellsWhatIsUnderWay)
{
    std::optional<BackgroundWorker> worker(std::in_place);
    std::promise<void> begun;
    worker->post([&begun, &self = *worker, stop = worker->stopToken()] {
        begun.set_value();
        while (!stop.stop_requested())
            std::this_thread::yield();
        self.post([] { FAIL(); });
    });
    worker->post([] { FAIL(); });
    begun.get_future().wait();
    worker.reset();
}

TEST(BackgroundWorkerTest, TakesUpWorkAgainAfterARest)
{
    BackgroundWorker worker;
    for (int round = 0; round < 1000; ++round) {
        std::promise<int> done;
        worker.post([&] { done.set_value(round); });
        ASSERT_EQ(done.get_future().get(), round);
    }
}

TEST(BackgroundWorkerTest, ShortInputIsWorkedOnAtOnceAndLongInputElsewhereForALivingOwner)
{
    BackgroundWorker worker;
    ManualQueue queue;
    auto owner = std::make_unique<QObject>();
    std::thread::id thread;
    const auto post = [&](qsizetype size) {
        thread = {};
        worker.postIfLong(queue, owner.get(), size, std::this_thread::get_id,
                          [&](std::thread::id used) { thread = used; });
        return thread;
    };
    EXPECT_EQ(post(1), std::this_thread::get_id());
    EXPECT_EQ(post(1 << 20), std::thread::id()) << "the main thread did not wait for it";
    ASSERT_TRUE(QTest::qWaitFor([&] { return queue.drain(), thread != std::thread::id(); }));
    EXPECT_NE(thread, std::this_thread::get_id());
    post(1 << 20);
    owner.reset();
    std::promise<void> done;
    worker.post([&] { done.set_value(); });
    done.get_future().wait();
    queue.drain();
    EXPECT_EQ(thread, std::thread::id());
}

} // namespace
