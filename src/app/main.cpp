#include "AppDelegate.h"
#include "ProcessSignals.h"
#include "SingleInstance.h"

#include <QApplication>

#include <csignal>
#include <cstdlib>

namespace {

bool isRunning = false;

/// Qt calls exit() from within the event loop when the X server is gone. Sounds and sockets are
/// still at work on threads of their own then, and must not see the statics go that exit() takes
/// down.
void leaveAtOnce()
{
    if (isRunning)
        std::_Exit(EXIT_FAILURE);
}

} // namespace

int main(int argc, char *argv[])
{
    // A write to a relay that has gone must not end the program.
    std::signal(SIGPIPE, SIG_IGN);

    // The island has to place itself, which a Wayland session allows through its X server alone.
    const bool choosesX
        = qEnvironmentVariableIsSet("DISPLAY") && !qEnvironmentVariableIsSet("QT_QPA_PLATFORM");
    if (choosesX)
        qputenv("QT_QPA_PLATFORM", "xcb");
    QApplication application(argc, argv);
    // What is started from here makes its own choice.
    if (choosesX)
        qunsetenv("QT_QPA_PLATFORM");
    QApplication::setApplicationName(QStringLiteral("tirlo"));
    QApplication::setApplicationDisplayName(QStringLiteral("Tirlo"));
    // The program lives on without a window, until the user quits it.
    QApplication::setQuitOnLastWindowClosed(false);

    // Before the lock, which tells others where to send their signal.
    tirlo::ProcessSignals processSignals;
    const tirlo::Paths paths = tirlo::Paths::ofUser();
    tirlo::SingleInstance instance(paths);
    if (!instance.claim())
        return 0;

    tirlo::AppDelegate delegate(paths);
    if (!delegate.applicationDidFinishLaunching())
        return 1;
    processSignals.onCalled = [&delegate] { delegate.openIsland(); };
    // What is registered last is called first.
    std::atexit(leaveAtOnce);
    isRunning = true;
    const int status = QApplication::exec();
    isRunning = false;
    processSignals.onCalled = nullptr;
    return status;
}
