#pragma once

#include <QSocketNotifier>

#include <memory>
#include <vector>

namespace tirlo {

/// Brings the process's signals to the event loop: SIGTERM, SIGINT and SIGHUP end the application
/// in order. One that was ignored at the start stays so: nohup asks for that.
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

private:
    std::vector<int> m_caught;
    std::unique_ptr<QSocketNotifier> m_notifier;
};

} // namespace tirlo
