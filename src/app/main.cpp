#include "AppDelegate.h"
#include "TerminationSignals.h"

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

    const tirlo::TerminationSignals terminationSignals;
    tirlo::AppDelegate delegate;
    if (!delegate.applicationDidFinishLaunching())
        return 1;
    return QApplication::exec();
}
