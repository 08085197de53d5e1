// What the program costs while nothing happens, beside empty programs measured in the same run.
//
//   tools/stage idle [SECONDS]      60 seconds of the hidden island by default

#include "Floors.h"
#include "Probe.h"

#include <QElapsedTimer>
#include <QGuiApplication>
#include <QImage>
#include <QPixmap>
#include <QProcess>
#include <QScreen>
#include <QTemporaryDir>
#include <QThread>

#include <algorithm>
#include <cstdio>
#include <cstring>

#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

namespace {

/// From the start until the island has hidden itself: greeting, fold, and a minute of peeking.
constexpr int secondsUntilHidden = 70;

bool accepts(const QByteArray &path)
{
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    if (path.size() >= qsizetype(sizeof address.sun_path))
        return false;
    std::memcpy(address.sun_path, path.constData(), std::size_t(path.size()));
    const int fd = socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
    const bool connected
        = connect(fd, reinterpret_cast<const sockaddr *>(&address), sizeof address) == 0;
    close(fd);
    return connected;
}

/// A program in a home of its own, measured from outside.
class Measured
{
public:
    Measured(const QString &program, const QStringList &arguments)
    {
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert("HOME", m_home.path());
        environment.remove("QT_LINUX_ACCESSIBILITY_ALWAYS_ON");
        m_process.setProcessEnvironment(environment);
        m_process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        m_clock.start();
        m_process.start(program, arguments);
        m_process.waitForStarted();
    }

    ~Measured()
    {
        m_process.terminate();
        m_process.waitForFinished();
    }

    /// Milliseconds from the start until the socket of the hooks answers.
    double waitForSocket() const
    {
        const QByteArray path
            = (m_home.path() + "/Library/Application Support/Skerry/qv.sock").toUtf8();
        while (!accepts(path) && m_clock.elapsed() < 10000)
            QThread::msleep(1);
        return double(m_clock.nsecsElapsed()) * 1e-6;
    }

    /// Milliseconds from the start until the island is seen on the screen.
    double waitForFirstFrame() const
    {
        QScreen *screen = QGuiApplication::primaryScreen();
        const int middle = screen->geometry().width() / 2;
        const auto isSeen = [&] {
            return screen->grabWindow(0, middle, 2, 1, 1).toImage().pixelColor(0, 0) == Qt::black;
        };
        while (!isSeen() && m_clock.elapsed() < 10000)
            QThread::msleep(1);
        return double(m_clock.nsecsElapsed()) * 1e-6;
    }

    /// Usage over the next seconds; memory as it is at the end.
    Usage watch(int seconds) const
    {
        const Usage before = usageOf(m_process.processId());
        QThread::sleep(static_cast<unsigned long>(seconds));
        Usage after = usageOf(m_process.processId());
        after.cpuSeconds -= before.cpuSeconds;
        after.contextSwitches -= before.contextSwitches;
        return after;
    }

private:
    QTemporaryDir m_home;
    QProcess m_process;
    QElapsedTimer m_clock;
};

void printRow(const char *what, double program, double floor, double goal)
{
    std::printf("%-28s %10.2f %10.2f %8.2f   %.1f\n", what, program, floor, program / floor, goal);
}

} // namespace

int main(int argc, char *argv[])
{
    if (argc > 1 && std::strcmp(argv[1], "--window") == 0)
        return runWindowFloor(argc, argv);
    if (argc > 1 && std::strcmp(argv[1], "--poll") == 0)
        return runPollFloor(argc, argv);

    QGuiApplication application(argc, argv);
    const int seconds = argc > 1 ? std::clamp(std::atoi(argv[1]), 1, 600) : 60;
    const QString self = QCoreApplication::applicationFilePath();

    const Measured window(self, {"--window"});
    const Measured poll(self, {"--poll"});
    const Measured tirlo(TIRLO_PROGRAM, {});
    std::printf("From exec to a listening socket: %.0f ms\n", tirlo.waitForSocket());
    std::printf("From exec to the first frame: %.0f ms\n", tirlo.waitForFirstFrame());
    std::printf("Waiting %d s until the island is hidden\n", secondsUntilHidden);
    std::fflush(stdout);
    QThread::sleep(secondsUntilHidden);

    const Usage pollUsage = poll.watch(seconds);
    const Usage tirloUsage = tirlo.watch(seconds);
    const Usage windowUsage = window.watch(1);
    std::printf("\nHidden for %d s%18s %10s %10s %8s\n", seconds, "Tirlo", "floor", "ratio",
                "goal");
    printRow("CPU seconds", tirloUsage.cpuSeconds, pollUsage.cpuSeconds, 1.2);
    printRow("context switches", tirloUsage.contextSwitches, pollUsage.contextSwitches, 1.2);
    printRow("resident memory, MiB", tirloUsage.residentMemory, windowUsage.residentMemory, 1.6);
    printRow("proportional memory, MiB", tirloUsage.proportionalMemory,
             windowUsage.proportionalMemory, 1.6);
    return 0;
}
