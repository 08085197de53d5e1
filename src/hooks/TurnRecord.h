#pragma once

#include <QDateTime>
#include <QString>

#include <cstdint>

namespace tirlo {

/// How a turn ended of which its agent's hooks say nothing.
struct SilentEnd
{
    enum class Kind {
        /// It has not, as far as can be told.
        none,
        /// Its user broke it off.
        brokenOff,
        /// It failed; the words say how.
        failed,
    };
    Kind kind = Kind::none;
    QString words;
    bool isRateLimit = false;

    bool operator==(const SilentEnd &) const = default;
};

/// Where an agent keeps its own account of a session.
struct TurnRecord
{
    QString sessionId;
    /// Path of what was said in the session, a JSON object a line; "" without one.
    QString transcript;
    /// The agent's process; 0 where it is not known.
    std::int64_t pid = 0;
    /// When its hooks were last heard of: what was written before is past.
    QDateTime heard;

    bool operator==(const TurnRecord &) const = default;
};

/// What the agent's own account says of the end of its turn.
///
/// Only the end of a file is read, and only of a plain one of the user's own: neither a pipe, which
/// would keep its reader waiting, nor a link to who knows where.
[[nodiscard]] SilentEnd silentEnd(const TurnRecord &record);

} // namespace tirlo
