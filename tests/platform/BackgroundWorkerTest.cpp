#include "platform/BackgroundWorker.h"

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

} // namespace
