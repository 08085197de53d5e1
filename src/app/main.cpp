#include "AppDelegate.h"
#include "CommandServer.h"
#include "ProcessSignals.h"
#include "RunningProgram.h"
#include "SingleInstance.h"
#include "platform/linux/XDisplay.h"

#include <QApplication>

#include <csignal>
#include <cstdio>
#include <cstdlib>

namespace {

using namespace tirlo;

constexpr int failure = 1;
constexpr int wrongUse = 2;

/// The program while its event loop runs.
AppDelegate *running = nullptr;

/// Qt calls exit() from within the event loop when the X server is gone. Sounds and sockets are
/// still at work on threads of their own then, and must not see the statics go that exit() takes
/// down.
void leaveAtOnce()
{
    if (!running)
        return;
    running->flush();
    std::_Exit(failure);
}

int complain(const char *what)
{
    std::fprintf(stderr, "tirlo: %s\n", what);
    return failure;
}

int complainOfUse()
{
    complain("the options are --open, --settings and --quit, one at a time.");
    return wrongUse;
}

/// The status to exit with once the program that runs was asked.
int exitStatus(RunningProgram::Answer answer)
{
    return answer == RunningProgram::Answer::done ? 0 : complain(RunningProgram::complaint(answer));
}

void perform(AppDelegate &delegate, Command command)
{
    switch (command) {
    case Command::open:
        delegate.openIsland();
        break;
    case Command::settings:
        delegate.openSettings();
        break;
    case Command::quit:
        QCoreApplication::quit();
        break;
    }
}

int run(int argc, char *argv[], const Paths &paths)
{
    // The island has to place itself, which a Wayland session allows through its X server alone.
    const QByteArray platform = qgetenv("QT_QPA_PLATFORM");
    if (platform.isEmpty() || platform == "xcb") {
        if (const QString missing = missingDisplay(); !missing.isEmpty())
            return complain(qPrintable(missing));
        qputenv("QT_QPA_PLATFORM", "xcb");
    }
    QApplication application(argc, argv);
    // What is started from here makes its own choice.
    if (platform.isEmpty())
        qunsetenv("QT_QPA_PLATFORM");
    QApplication::setApplicationName(QStringLiteral("tirlo"));
    QApplication::setApplicationDisplayName(QStringLiteral("Tirlo"));
    // The program lives on without a window, until the user quits it.
    QApplication::setQuitOnLastWindowClosed(false);

    const ProcessSignals processSignals;
    AppDelegate delegate(paths);
    delegate.applicationDidFinishLaunching();
    QtMainQueue queue;
    CommandServer commands(queue, paths.commandSocketPath(),
                           [&delegate](Command command) { perform(delegate, command); });
    commands.start();
    // What is registered last is called first.
    std::atexit(leaveAtOnce);
    running = &delegate;
    const int status = QApplication::exec();
    running = nullptr;
    return status;
}

} // namespace

int main(int argc, char *argv[])
{
    // A write to a relay that has gone must not end the program.
    std::signal(SIGPIPE, SIG_IGN);

    const Paths paths = Paths::ofUser();
    if (argc > 1) {
        const QString option = QString::fromLocal8Bit(argv[1]);
        const auto command = fromRawText<Command>(option.mid(2));
        if (argc > 2 || !option.startsWith(QLatin1String("--")) || !command)
            return complainOfUse();
        return exitStatus(RunningProgram::ask(paths, *command));
    }

    SingleInstance instance(paths);
    while (!instance.claim()) {
        const auto answer = RunningProgram::ask(paths, Command::open);
        // One that was about to end has left its place.
        if (answer != RunningProgram::Answer::notRunning)
            return exitStatus(answer);
    }
    return run(argc, argv, paths);
}
