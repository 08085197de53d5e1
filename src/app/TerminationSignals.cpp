#include "TerminationSignals.h"

#include <QCoreApplication>

#include <array>
#include <csignal>
#include <fcntl.h>
#include <unistd.h>

namespace tirlo {

namespace {

constexpr std::array signalNumbers{SIGTERM, SIGINT, SIGHUP};

/// The pipe from the handler to the event loop: reading end first.
std::array<int, 2> wakePipe{-1, -1};

void wake(int)
{
    // The pipe is non-blocking: when it is full the loop has been woken already.
    [[maybe_unused]] const auto written = write(wakePipe[1], "", 1);
}

} // namespace

TerminationSignals::TerminationSignals()
{
    if (pipe2(wakePipe.data(), O_CLOEXEC | O_NONBLOCK) != 0)
        return;
    m_notifier = std::make_unique<QSocketNotifier>(wakePipe[0], QSocketNotifier::Read);
    QObject::connect(m_notifier.get(), &QSocketNotifier::activated, m_notifier.get(), [this] {
        m_notifier->setEnabled(false);
        QCoreApplication::quit();
    });

    struct sigaction action = {};
    action.sa_handler = wake;
    action.sa_flags = SA_RESTART;
    for (const int number : signalNumbers)
        sigaction(number, &action, nullptr);
}

TerminationSignals::~TerminationSignals()
{
    if (!m_notifier)
        return;
    for (const int number : signalNumbers)
        std::signal(number, SIG_DFL);
    m_notifier.reset();
    for (const int fd : wakePipe)
        close(fd);
}

} // namespace tirlo
