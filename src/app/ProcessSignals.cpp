#include "ProcessSignals.h"

#include <QCoreApplication>

#include <array>
#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <unistd.h>

namespace tirlo {

namespace {

constexpr std::array signalNumbers{SIGTERM, SIGINT, SIGHUP};

/// The pipe from the handler to the event loop: reading end first.
std::array<int, 2> wakePipe{-1, -1};

void wake(int number)
{
    const int savedError = errno;
    const auto byte = static_cast<unsigned char>(number);
    // The pipe is non-blocking: when it is full the loop has been woken already.
    [[maybe_unused]] const auto written = write(wakePipe[1], &byte, 1);
    errno = savedError;
}

void takeSignals()
{
    unsigned char number = 0;
    while (read(wakePipe[0], &number, 1) == 1)
        QCoreApplication::quit();
}

} // namespace

ProcessSignals::ProcessSignals()
{
    if (pipe2(wakePipe.data(), O_CLOEXEC | O_NONBLOCK) != 0)
        return;
    m_notifier = std::make_unique<QSocketNotifier>(wakePipe[0], QSocketNotifier::Read);
    QObject::connect(m_notifier.get(), &QSocketNotifier::activated, m_notifier.get(),
                     [] { takeSignals(); });

    struct sigaction action = {};
    action.sa_handler = wake;
    action.sa_flags = SA_RESTART;
    for (const int number : signalNumbers) {
        struct sigaction before = {};
        if (sigaction(number, nullptr, &before) != 0 || before.sa_handler == SIG_IGN)
            continue;
        sigaction(number, &action, nullptr);
        m_caught.push_back(number);
    }
}

ProcessSignals::~ProcessSignals()
{
    if (!m_notifier)
        return;
    for (const int number : m_caught)
        std::signal(number, SIG_DFL);
    m_notifier.reset();
    for (const int fd : wakePipe)
        close(fd);
}

} // namespace tirlo
