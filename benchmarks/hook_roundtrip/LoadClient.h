#pragma once

#include <QByteArray>
#include <QString>

namespace tirlo {

/// How hard the agents' side presses.
struct Load
{
    int eventsPerSecond = 1000;
    int seconds = 10;
    int threads = 4;
};

/// Sends events to the socket on a fixed schedule, one connection each, and waits for the replies.
///
/// The result has one line of text an event: microseconds from the time an event was due to the end
/// of its reply, so that a server that falls behind can't hide it; -1 for one without its reply.
[[nodiscard]] QByteArray runLoadClient(const QString &socketPath, const Load &load);

} // namespace tirlo
