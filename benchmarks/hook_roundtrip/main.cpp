// What a hook costs an agent: the reply's latency under load beside that of a bare echo server, and
// the whole relay process beside a bare interpreter start. Ends with 1 when a goal is missed.

#include "EchoServer.h"
#include "LoadClient.h"
#include "RelayRuns.h"
#include "RepaintLoad.h"
#include "core/AppState.h"
#include "core/Notifications.h"
#include "hooks/HookServer.h"
#include "mascot/SoundEngine.h"
#include "platform/linux/FileKeyValueStore.h"
#include "platform/linux/QtMainQueue.h"

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

double percentile(std::vector<double> values, double share)
{
    const auto at = values.begin() + std::ptrdiff_t(double(values.size() - 1) * share);
    std::ranges::nth_element(values, at);
    return *at;
}

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

bool report(const char *what, double ratio, double goal)
{
    std::printf("  %-22s %8.2f   (goal: at most %.1f)\n", what, ratio, goal);
    return ratio <= goal;
}

bool reportLatency(const std::vector<double> &floor, const std::vector<double> &hooks)
{
    const Load load;
    std::printf(
        "reply latency in microseconds, %d events/s for %d s, %d rounds, while repainting\n",
        load.eventsPerSecond, load.seconds, rounds);
    std::printf("  %-22s %8s %8s %8s %8s\n", "", "p50", "p99", "worst", "lost");
    const auto row = [](const char *name, const std::vector<double> &values) {
        std::printf("  %-22s %8.0f %8.0f %8.0f %8td\n", name, percentile(values, 0.5),
                    percentile(values, 0.99), percentile(values, 1),
                    std::ranges::count(values, lost));
    };
    row("bare echo server", floor);
    row("hook server", hooks);
    const bool isComplete = std::ranges::count(hooks, lost) == 0;
    return report("ratio of p99", percentile(hooks, 0.99) / percentile(floor, 0.99), latencyGoal)
        && isComplete;
}

bool reportRelay(const RelayTimes &times)
{
    const double interpreter = percentile(times.interpreter, 0.5);
    const double relay = percentile(times.relay, 0.5);
    std::printf("whole process in milliseconds, median of %d runs by turns\n", relayRuns);
    std::printf("  %-22s %8.2f\n", "sh and bare python3", interpreter);
    std::printf("  %-22s %8.2f\n", "qv-hook, an event", relay);
    return report("ratio", relay / interpreter, relayGoal);
}

} // namespace

int main(int argc, char *argv[])
{
    std::signal(SIGPIPE, SIG_IGN);
    if (argc == 3 && qstrcmp(argv[1], "--client") == 0) {
        const QByteArray lines = runLoadClient(QFile::decodeName(argv[2]), Load());
        std::fwrite(lines.constData(), 1, std::size_t(lines.size()), stdout);
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
    HookServer server({state, notifications, sound, queue, log}, paths);
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
