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
    /// an empty repaint of the same rectangle. What the dearest frame of each costs is told
    /// where it holds the work of laying something out.
    template<typename Prepare, typename Start>
    void measure(const char *name, Prepare prepare, Start start, QRect rect = panel,
                 bool tellsDearest = false)
    {
        std::vector<double> floor;
        std::vector<double> frames;
        std::vector<double> dearest;
        for (int round = 0; round < rounds; ++round) {
            prepare(m_scene.state);
            m_queue.advance(2);
            QCoreApplication::processEvents();
            const double set = timeFrame([&] { start(m_scene.state); });
            frames.push_back(set);
            for (int i = 0; i < framesPerRound; ++i) {
                frames.push_back(timeFrame([this] { m_queue.advance(frameSeconds); }));
                floor.push_back(timeFrame([=, this] { m_empty.update(rect); }));
            }
            dearest.push_back(
                std::max(set, *std::max_element(frames.end() - framesPerRound, frames.end())));
        }
        const double ratio = m_scene.window().devicePixelRatioF();
        const QString what = QStringLiteral("%1, ratio %2 (goal: %3 ms)")
                                 .arg(QLatin1String(name))
                                 .arg(ratio)
                                 .arg(ratio > 1 ? 6 : 2);
        printRow(qPrintable(what), median(frames), median(floor), goalPerFloor);
        if (tellsDearest)
            printRow("  the dearest frame of that", median(dearest), median(floor));
    }

private:
    ManualQueue m_queue;
    ManualFrameDriver m_driver{m_queue};
    EmptyPanel m_empty;
    Scene m_scene{m_queue, m_driver};
};

/// A request that arrives over the open overview, in the middle of the card's growth.
void measureRequests(Measurement &measurement)
{
    using Kind = RequestContent::Kind;
    const QString script = QStringLiteral("cp -r module /tmp/backup/module && rm -rf build\n");
    const QString plan = QStringLiteral("## Step\n\n- one **thing**\n- another `thing`\n\n");
    const struct
    {
        const char *name;
        Kind kind;
        QString text;
    } requests[] = {{"a script of 2,000 lines", Kind::command, script.repeated(2000)},
                    {"a plan of 200 kB", Kind::plan, plan.repeated(200'000 / plan.size())}};
    for (const auto &request : requests) {
        measurement.measure(
            request.name,
            [](AppState &state) {
                state.pendingApproval = std::nullopt;
                IslandWriter(state).setView(IslandView::overview);
                IslandWriter(state).setMode(IslandMode::expanded);
            },
            [&request](AppState &state) {
                static quint64 id = 0;
                state.pendingApproval
                    = ApprovalInfo{.id = ++id,
                                   .pillId = state.focusTask()->id,
                                   .content = {.kind = request.kind, .text = request.text}};
                IslandWriter(state).setView(IslandView::approval);
            },
            panel, true);
    }
}

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
    measureRequests(measurement);
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
