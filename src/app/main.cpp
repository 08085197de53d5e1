#include "AppDelegate.h"
#include "ProcessSignals.h"
#include "SingleInstance.h"

#include <QApplication>

#include <csignal>

int main(int argc, char *argv[])
{
    // A write to a relay that has gone must not end the program.
    std::signal(SIGPIPE, SIG_IGN);

    QApplication application(argc, argv);
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
    const int status = QApplication::exec();
    processSignals.onCalled = nullptr;
    return status;
}
