#pragma once

#include <QSocketNotifier>

#include <memory>

namespace tirlo {

/// Turns SIGTERM, SIGINT and SIGHUP into an orderly end of the application's event loop.
///
/// There is one for the whole process. Signals are caught rather than blocked, since programs that
/// are started from here would inherit a blocked one.
class TerminationSignals
{
public:
    TerminationSignals();
    ~TerminationSignals();
    TerminationSignals(const TerminationSignals &) = delete;
    TerminationSignals &operator=(const TerminationSignals &) = delete;

private:
    std::unique_ptr<QSocketNotifier> m_notifier;
};

} // namespace tirlo
