#pragma once

#include <QByteArray>
#include <QString>

#include <functional>
#include <stop_token>
#include <vector>

namespace tirlo {

/// How hard the agents' side presses.
struct Load
{
    int eventsPerSecond = 1000;
    int seconds = 10;
    int threads = 4;
    /// The line of the event with that number; several threads ask at once.
    std::function<QByteArray(int)> lineOf = [](int) { return plainEvent(); };

    /// A tool's event as a relay sends it.
    [[nodiscard]] static QByteArray plainEvent();
};

/// Sends events to the socket on a fixed schedule, one connection each, and waits for the replies.
///
/// The result has one number an event that was sent before the stop: microseconds from the time an
/// event was due to the end of its reply, so that a server that falls behind can't hide it; -1 for
/// one without its reply.
[[nodiscard]] std::vector<qint64> runLoadClient(const QString &socketPath, const Load &load,
                                                const std::stop_token &stop = {});

} // namespace tirlo
