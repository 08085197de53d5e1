#include "platform/linux/QtMainQueue.h"

#include "support/ManualQueue.h"

#include <QTest>

#include <gtest/gtest.h>

using namespace tirlo;

namespace {

TEST(MainQueueTest, CancelledAndOrphanedWorkNeverRuns)
{
    ManualQueue queue;
    int runs = 0;
    const auto held = std::make_shared<int>(0);
    auto owner = std::make_unique<QObject>();

    WorkItem cancelled = queue.after(1, nullptr, [&runs, held] { ++runs; });
    const WorkItem orphaned = queue.after(1, owner.get(), [&] { ++runs; });
    WorkItem kept;
    kept = queue.after(1, nullptr, [&] {
        ++runs;
        kept.cancel();
    });
    cancelled.cancel();
    EXPECT_EQ(held.use_count(), 1) << "a cancelled action lets go of what it holds";
    owner.reset();
    EXPECT_FALSE(cancelled.isPending());
    EXPECT_FALSE(orphaned.isPending());
    EXPECT_TRUE(kept.isPending());

    queue.advance(2);
    EXPECT_EQ(runs, 1);
    EXPECT_FALSE(kept.isPending());
    WorkItem().cancel();
}

TEST(MainQueueTest, TheRealQueueDelaysAndCancelsAndWakesOnceForWorkWithSlack)
{
    QtMainQueue queue;
    const double start = queue.mediaTime();
    queue.after(0.01, nullptr, [] { ADD_FAILURE(); }).cancel();
    double exact = 0;
    queue.after(0.03, nullptr, [&] { exact = queue.mediaTime(); });
    QList<double> ran;
    for (const double wait : {0.01, 0.07, 0.13, 0.19}) {
        const auto work = [&, wait] {
            ran.append(queue.mediaTime());
            EXPECT_GE(ran.last() - start, wait - 0.001);
        };
        queue.after(wait, nullptr, work, 0.4);
    }
    ASSERT_TRUE(QTest::qWaitFor([&] { return exact > 0 && ran.size() == 4; }));
    EXPECT_GE(exact - start, 0.029);
    // The grid may have a line between them, so they make two groups at most.
    int groups = 1;
    for (qsizetype i = 1; i < ran.size(); ++i)
        groups += ran[i] - ran[i - 1] > 0.03;
    EXPECT_LE(groups, 2);
}

} // namespace
