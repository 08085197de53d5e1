// What a frame of the open island in motion costs, beside a floor measured by turns with it: an
// empty window of the panel's size that is repainted whole. Then how often a hidden island paints.
//
//   tools/stage island_frame          ratio 1, then ratio 2, then 10 seconds of the hidden island

#include "Scene.h"

#include "common/Row.h"

#include "core/IslandConst.h"
#include "island/IslandWriter.h"
#include "platform/linux/QtMainQueue.h"
#include "support/ManualFrameDriver.h"
#include "support/ManualQueue.h"
#include "ui/motion/TimerFrameDriver.h"

#include <QApplication>
#include <QProcess>
#include <QTimer>
#include <QWindow>

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <ctime>
#include <vector>

using namespace tirlo;

namespace {

constexpr double frameSeconds = 1.0 / 60;
constexpr int rounds = 30;
constexpr int framesPerRound = 24;
constexpr double goalPerFloor = 3;
constexpr QRect panel(0, 0, IslandConst::panelWidth, IslandConst::panelHeight);
constexpr QRect film(40, 0, 640, 180);
constexpr int hiddenMilliseconds = 10000;

/// The least that a frame of such a window can cost.
class EmptyPanel : public QWidget
{
public:
    EmptyPanel()
        : QWidget(nullptr, Qt::FramelessWindowHint | Qt::WindowDoesNotAcceptFocus)
    {
        setAttribute(Qt::WA_TranslucentBackground);
        setFixedSize(IslandConst::panelWidth, IslandConst::panelHeight);
    }
};

/// Counts what any widget paints.
class PaintCounter : public QObject
{
public:
    PaintCounter() { qApp->installEventFilter(this); }

    bool eventFilter(QObject *, QEvent *event) override
    {
        count += event->type() == QEvent::Paint ? 1 : 0;
        return false;
    }

    int count = 0;
};

double processorMilliseconds()
{
    timespec spent{};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &spent);
    return double(spent.tv_sec) * 1e3 + double(spent.tv_nsec) * 1e-6;
}

/// Milliseconds of processor time for the work and all painting that follows from it.
template<typename Work>
double timeFrame(Work work)
{
    const double start = processorMilliseconds();
    work();
    QCoreApplication::sendPostedEvents();
    QCoreApplication::processEvents();
    return processorMilliseconds() - start;
}

class Measurement
{
public:
    Measurement()
    {
        for (QWidget *window : {static_cast<QWidget *>(&m_empty), &m_scene.window()}) {
            window->show();
            while (!window->windowHandle()->isExposed())
                QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
        }
    }

    /// Sets off on a motion from an island at rest, many times, and prints its median frame beside
    /// an empty repaint of the same rectangle.
    template<typename Prepare, typename Start>
    void measure(const char *name, Prepare prepare, Start start, QRect rect = panel)
    {
        std::vector<double> floor;
        std::vector<double> frames;
        for (int round = 0; round < rounds; ++round) {
            prepare(m_scene.state);
            m_queue.advance(2);
            QCoreApplication::processEvents();
            start(m_scene.state);
            for (int i = 0; i < framesPerRound; ++i) {
                frames.push_back(timeFrame([this] { m_queue.advance(frameSeconds); }));
                floor.push_back(timeFrame([=, this] { m_empty.update(rect); }));
            }
        }
        const double ratio = m_scene.window().devicePixelRatioF();
        const QString what = QStringLiteral("%1, ratio %2 (goal: %3 ms)")
                                 .arg(QLatin1String(name))
                                 .arg(ratio)
                                 .arg(ratio > 1 ? 6 : 2);
        printRow(qPrintable(what), median(frames), median(floor), goalPerFloor);
    }

private:
    ManualQueue m_queue;
    ManualFrameDriver m_driver{m_queue};
    EmptyPanel m_empty;
    Scene m_scene{m_queue, m_driver};
};

void measureFrames()
{
    using enum IslandMode;
    Measurement measurement;
    const auto closed = [](AppState &state) {
        IslandWriter(state).setView(IslandView::overview);
        IslandWriter(state).setMode(compact);
    };
    const auto opened = [](AppState &state) {
        IslandWriter(state).setView(IslandView::overview);
        IslandWriter(state).setMode(expanded);
    };
    const auto nothing = [](AppState &) {};
    measurement.measure("opening", closed,
                        [](AppState &state) { IslandWriter(state).setMode(expanded); });
    measurement.measure("closing", opened,
                        [](AppState &state) { IslandWriter(state).setMode(compact); });
    measurement.measure("changing cards", opened,
                        [](AppState &state) { IslandWriter(state).setView(IslandView::question); });
    measurement.measure("agents at work", opened, nothing);
    measurement.measure(
        "greeting", closed,
        [](AppState &state) {
            IslandWriter(state).setView(IslandView::greeting);
            IslandWriter(state).setMode(expanded);
        },
        film);
}

/// Real time, and everything that runs by itself in it.
void countHiddenPaints()
{
    QtMainQueue queue;
    TimerFrameDriver driver;
    Scene scene(queue, driver);
    IslandWriter(scene.state).setMode(IslandMode::hidden);
    scene.window().show();
    const auto wait = [](int milliseconds) {
        QTimer::singleShot(milliseconds, qApp, &QCoreApplication::quit);
        QCoreApplication::exec();
    };
    wait(1000);
    PaintCounter counter;
    wait(hiddenMilliseconds);
    std::printf("\nPaints of the hidden island in %d s: %d\n", hiddenMilliseconds / 1000,
                counter.count);
}

int runAgain(const char *factor, const QStringList &arguments)
{
    QProcess process;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert("QT_SCALE_FACTOR", factor);
    process.setProcessEnvironment(environment);
    process.setProcessChannelMode(QProcess::ForwardedChannels);
    process.start(QCoreApplication::applicationFilePath(), arguments);
    process.waitForFinished(-1);
    return process.exitCode();
}

} // namespace

int main(int argc, char *argv[])
{
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM") && !qEnvironmentVariableIsSet("DISPLAY"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication application(argc, argv);
    if (argc > 1 && std::strcmp(argv[1], "--frames") == 0) {
        measureFrames();
        return 0;
    }
    printHeading(
        "A frame of the island in motion in milliseconds of processor time, beside an empty "
        "repaint");
    for (const char *factor : {"1", "2"}) {
        if (const int error = runAgain(factor, {"--frames"}))
            return error;
    }
    countHiddenPaints();
    return 0;
}
