#pragma once

#include <QSocketNotifier>

#include <functional>
#include <memory>

namespace tirlo {

/// Brings the process's signals to the event loop: SIGTERM, SIGINT and SIGHUP end the application
/// in order, SIGUSR1 calls back.
///
/// There is one for the whole process. Signals are caught rather than blocked, since programs that
/// are started from here would inherit a blocked one.
class ProcessSignals
{
public:
    ProcessSignals();
    ~ProcessSignals();
    ProcessSignals(const ProcessSignals &) = delete;
    ProcessSignals &operator=(const ProcessSignals &) = delete;

    /// Called on the main thread when another start of the program asks for this one.
    std::function<void()> onCalled;

private:
    void takeSignals();

    std::unique_ptr<QSocketNotifier> m_notifier;
};

} // namespace tirlo
