// What the open island costs while everything on it moves, beside a window of the same size that
// repaints one flat ellipse at the same rate.
//
//   tools/stage busy [SECONDS]      20 seconds by default

#include "EllipseFloor.h"

#include "common/Probe.h"
#include "common/Row.h"

#include "e2e/kit/Agent.h"
#include "e2e/kit/Desktop.h"
#include "e2e/kit/Program.h"

#include <QGuiApplication>
#include <QProcess>
#include <QThread>

#include <algorithm>
#include <array>
#include <cstdio>
#include <cstring>

using namespace tirlo::e2e;

namespace {

/// The greeting and its fold.
constexpr int greetingSeconds = 9;

/// Gives the main pill and four others something to do, so that five mascots move.
void startWork(const Program &program)
{
    constexpr std::array tags{"", "codex", "gemini", "antigravity", "other"};
    for (const char *tag : tags) {
        const Agent agent{program.hookScript(), QString("session-%1").arg(tag), "/src/lighthouse",
                          tag};
        agent.send("UserPromptSubmit", {{"prompt", "Light the lamp"}});
        agent.sendTool("Bash", {{"command", "make"}});
    }
}

} // namespace

int main(int argc, char *argv[])
{
    if (argc > 1 && std::strcmp(argv[1], "--ellipse") == 0)
        return runEllipseFloor(argc, argv);

    QGuiApplication application(argc, argv);
    const int seconds = argc > 1 ? std::clamp(std::atoi(argv[1]), 1, 600) : 20;
    if (!isVirtualDesktop()) {
        std::fputs("This moves the pointer: run it through tools/stage.\n", stderr);
        return 1;
    }

    const Program program(TIRLO_PROGRAM);
    if (!program.isReady())
        return 1;
    QThread::sleep(greetingSeconds);
    startWork(program);
    clickAt(screenMiddle(), 10);
    movePointer(screenMiddle() - 200, 100);
    QThread::sleep(2);
    if (argc > 2)
        takePicture(argv[2]);
    const Usage open = usageOver(program.processId(), seconds);

    QProcess floor;
    floor.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    floor.start(QCoreApplication::applicationFilePath(), {"--ellipse"});
    if (!floor.waitForStarted())
        return 1;
    QThread::sleep(2);
    const Usage ellipse = usageOver(floor.processId(), seconds);
    floor.terminate();
    floor.waitForFinished();

    printHeading(qPrintable(
        QStringLiteral(
            "The open island with five mascots moving for %1 s, beside a window of its size "
            "repainting one flat ellipse")
            .arg(seconds)));
    printRow("CPU seconds", open.cpuSeconds, ellipse.cpuSeconds, 2.5);
    printRow("context switches", open.contextSwitches, ellipse.contextSwitches);
    return 0;
}
