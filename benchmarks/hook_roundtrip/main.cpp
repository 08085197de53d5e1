// What a hook costs an agent: the reply's latency under load beside that of a bare echo server, and
// the whole relay process beside a bare interpreter start. Ends with 1 when a goal is missed.

#include "EchoServer.h"
#include "RelayRuns.h"
#include "RepaintLoad.h"
#include "common/LoadClient.h"
#include "common/Row.h"
#include "core/AppState.h"
#include "core/Notifications.h"
#include "core/SoundEngine.h"
#include "hooks/HookServer.h"
#include "platform/linux/FileKeyValueStore.h"
#include "platform/linux/PidfdProcessWatch.h"
#include "platform/linux/QtMainQueue.h"
#include "support/StandInIsland.h"

#include <QApplication>
#include <QEventLoop>
#include <QProcess>
#include <QTemporaryDir>
#include <QThread>

#include <algorithm>
#include <csignal>
#include <cstdio>
#include <limits>
#include <memory>

using namespace tirlo;

namespace {

constexpr int rounds = 2;
constexpr int relayRuns = 80;
constexpr double latencyGoal = 2;
constexpr double relayGoal = 1.6;

/// An exchange without a reply counts as the slowest of all.
constexpr double lost = std::numeric_limits<double>::infinity();

/// Has another process put its load on the socket while this one's event loop runs.
void press(const QString &socketPath, std::vector<double> &microseconds)
{
    QProcess client;
    QEventLoop loop;
    QObject::connect(&client, &QProcess::finished, &loop, &QEventLoop::quit);
    client.start(QCoreApplication::applicationFilePath(), {QStringLiteral("--client"), socketPath});
    loop.exec();
    for (const QByteArray &line : client.readAllStandardOutput().trimmed().split('\n'))
        microseconds.push_back(line == "-1" ? lost : line.toDouble());
}

/// Runs the work on a thread of its own while this one's event loop runs.
template<typename Work>
void runAside(Work work)
{
    const std::unique_ptr<QThread> thread(QThread::create(work));
    QEventLoop loop;
    QObject::connect(thread.get(), &QThread::finished, &loop, &QEventLoop::quit);
    thread->start();
    loop.exec();
    thread->wait();
}

bool reportLatency(const std::vector<double> &floor, const std::vector<double> &hooks)
{
    const Load load;
    printHeading(qPrintable(
        QStringLiteral("The reply's latency in microseconds at %1 events/s, beside an echo server")
            .arg(load.eventsPerSecond)));
    printRow("median", median(hooks), median(floor));
    const bool isFast
        = printRow("99 %", percentile(hooks, 0.99), percentile(floor, 0.99), latencyGoal);
    const auto lostCount = std::ranges::count(hooks, lost);
    std::printf("\nReplies lost: %td of %zu\n", lostCount, hooks.size());
    return isFast && lostCount == 0;
}

bool reportRelay(const RelayTimes &times)
{
    printHeading("The whole relay process in milliseconds, beside sh and a bare interpreter");
    return printRow("an event", median(times.relay), median(times.interpreter), relayGoal);
}

} // namespace

int main(int argc, char *argv[])
{
    std::signal(SIGPIPE, SIG_IGN);
    if (argc == 3 && qstrcmp(argv[1], "--client") == 0) {
        for (const qint64 value : runLoadClient(QFile::decodeName(argv[2]), Load()))
            std::printf("%lld\n", value);
        return 0;
    }

    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication application(argc, argv);
    const QTemporaryDir home;
    const Paths paths(home.path());
    QtMainQueue queue;
    FileKeyValueStore store(home.filePath(QStringLiteral("settings.json")), queue);
    AppState state(store, queue);
    Notifications notifications;
    SilentSoundEngine sound;
    const AppLog log(paths, queue);
    StandInIsland island(state);
    PidfdProcessWatch processes{queue};
    HookServer server({state, notifications, island, sound, queue, processes, log}, paths);
    server.start();

    std::vector<double> floor;
    std::vector<double> hooks;
    {
        const RepaintLoad repaint;
        const QString echoPath = home.filePath(QStringLiteral("echo.sock"));
        const EchoServer echo(echoPath);
        for (int i = 0; i < rounds; ++i) {
            press(echoPath, floor);
            press(paths.socketPath(), hooks);
        }
    }
    RelayTimes times;
    runAside([&] { times = timeRelayRuns(home.path(), paths.hookScriptPath(), relayRuns); });

    const bool isReplyFast = reportLatency(floor, hooks);
    const bool isRelayFast = reportRelay(times);
    return isReplyFast && isRelayFast ? 0 : 1;
}
