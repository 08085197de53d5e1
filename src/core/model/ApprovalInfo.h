#pragma once

#include <QString>

namespace tirlo {

/// The one permission request that is on show.
struct ApprovalInfo
{
    /// The agent session that asked.
    QString sessionId;
    QString tool;
    /// `command` of the tool's input, or else the tool's name.
    QString command;
    /// Canonical text of the tool's input; tells whether a later event is about the same call.
    QString inputKey;
    /// The task that asked.
    QString pillId;

    bool operator==(const ApprovalInfo &) const = default;
};

} // namespace tirlo
