#include "platform/BackgroundWorker.h"

#include <gtest/gtest.h>

#include <future>
#include <optional>
#include <string>

using namespace tirlo;

namespace {

TEST(BackgroundWorkerTest, WorksInOrderAndToTheEndOnAnotherThread)
{
    std::optional<BackgroundWorker> worker(std::in_place);
    std::string order;
    std::thread::id thread;
    for (char c = 'a'; c <= 'z'; ++c) {
        worker->post([&, c] {
            order += c;
            thread = std::this_thread::get_id();
        });
    }
    worker->post([&] { worker->post([&] { order += '!'; }); });
    worker.reset();
    EXPECT_EQ(order, "abcdefghijklmnopqrstuvwxyz!");
    EXPECT_NE(thread, std::this_thread::get_id());
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
