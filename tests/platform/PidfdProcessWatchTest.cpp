#include "platform/linux/PidfdProcessWatch.h"
#include "support/ManualQueue.h"

#include <QProcess>
#include <QTest>

#include <gtest/gtest.h>

#include <csignal>
#include <unistd.h>

namespace tirlo {
namespace {

struct PidfdProcessWatchTest : testing::Test
{
    /// A child that runs until it is told to end.
    PidfdProcessWatchTest()
    {
        child.start(QStringLiteral("/bin/sleep"), {QStringLiteral("600")});
        EXPECT_TRUE(child.waitForStarted());
    }
    ~PidfdProcessWatchTest() override
    {
        child.kill();
        child.waitForFinished();
    }

    static ProcessId processOf(std::int64_t pid)
    {
        QFile stat(QStringLiteral("/proc/%1/stat").arg(pid));
        EXPECT_TRUE(stat.open(QIODevice::ReadOnly));
        const QByteArray text = stat.readAll();
        return {pid, text.mid(text.lastIndexOf(')') + 2).split(' ').at(19).toULongLong(), {}};
    }

    ProcessWatch::Handle watchOver(const ProcessId &process)
    {
        return watch.watch(process, [this] {
            ++told;
            // What is told may let go of the watch.
            kept.reset();
        });
    }

    void settle()
    {
        QTest::qWait(50);
        queue.drain();
    }

    QProcess child;
    ManualQueue queue;
    PidfdProcessWatch watch{queue};
    ProcessWatch::Handle kept;
    int told = 0;
};

TEST_F(PidfdProcessWatchTest, TellsTheEndOnce)
{
    const ProcessId process = processOf(child.processId());
    kept = watchOver(process);
    ASSERT_TRUE(kept);
    watchOver(process).reset();
    settle();
    EXPECT_EQ(told, 0);

    // It is told before anybody has asked for how the child ended.
    ::kill(pid_t(process.pid), SIGKILL);
    EXPECT_TRUE(QTest::qWaitFor([this] { return told > 0; }));
    settle();
    EXPECT_EQ(told, 1);

    // One that ended before now is told as well, but not from within.
    child.waitForFinished();
    kept = watchOver(process);
    ASSERT_TRUE(kept);
    EXPECT_EQ(told, 1);
    settle();
    EXPECT_EQ(told, 2);
}

TEST_F(PidfdProcessWatchTest, ANumberUsedAnewIsAnEndedProcess)
{
    ProcessId process = processOf(child.processId());
    ++process.start;
    kept = watchOver(process);
    ASSERT_TRUE(kept);
    EXPECT_EQ(told, 0);
    settle();
    EXPECT_EQ(told, 1);
    ::kill(pid_t(process.pid), SIGKILL);
    settle();
    EXPECT_EQ(told, 1);
}

TEST_F(PidfdProcessWatchTest, LeavesOtherProcessesAlone)
{
    ProcessId sandboxed = processOf(child.processId());
    sandboxed.space = QStringLiteral("pid:[1]");
    EXPECT_FALSE(watchOver(sandboxed));
    for (const std::int64_t pid : {std::int64_t(0), std::int64_t(-1), std::int64_t(1) << 32})
        EXPECT_FALSE(watchOver({pid, 0, {}})) << pid;

    // Another user's. Only root can make one.
    if (getuid() != 0)
        GTEST_SKIP() << "not run as root";
    QProcess other;
    other.setChildProcessModifier([] {
        if (setuid(65534) != 0)
            _exit(1);
    });
    other.start(QStringLiteral("/bin/sleep"), {QStringLiteral("600")});
    ASSERT_TRUE(other.waitForStarted());
    EXPECT_FALSE(watchOver(processOf(other.processId())));
    other.kill();
    other.waitForFinished();
    settle();
    EXPECT_EQ(told, 0);
}

} // namespace
} // namespace tirlo
