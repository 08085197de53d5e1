// What the program costs while nothing happens, beside empty programs measured in the same run.
//
//   tools/stage idle [SECONDS]      60 seconds of the hidden island by default

#include "Floors.h"
#include "common/MeasuredProgram.h"
#include "common/Row.h"

#include <QGuiApplication>
#include <QThread>

#include <algorithm>
#include <cstdio>
#include <cstring>

namespace {

/// From the start until the island has hidden itself: greeting, fold, and a minute of peeking.
constexpr int secondsUntilHidden = 70;

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

    const MeasuredProgram window(self, {"--window"});
    const MeasuredProgram poll(self, {"--poll"});
    const MeasuredProgram tirlo;
    QThread::sleep(secondsUntilHidden);

    const Usage pollUsage = poll.watch(seconds);
    const Usage tirloUsage = tirlo.watch(seconds);
    const Usage windowUsage = window.watch(1);
    printHeading(qPrintable(
        QStringLiteral(
            "The hidden island for %1 s, beside an empty window (CPU and switches: one that "
            "polls the pointer)")
            .arg(seconds)));
    printRow("CPU seconds", tirloUsage.cpuSeconds, pollUsage.cpuSeconds, 1.2);
    printRow("context switches", tirloUsage.contextSwitches, pollUsage.contextSwitches, 1.2);
    printRow("resident memory, MiB", tirloUsage.residentMemory, windowUsage.residentMemory, 1.6);
    printRow("proportional memory, MiB", tirloUsage.proportionalMemory,
             windowUsage.proportionalMemory, 1.6);
    return 0;
}
