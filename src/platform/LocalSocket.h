#pragma once

#include "FileDescriptor.h"

#include <QString>

#include <sys/types.h>

/// Stream sockets that are files.
namespace tirlo::LocalSocket {

/// Bytes of the longest path that everybody who is to find the socket can name.
inline constexpr qsizetype longestPath = 104;

/// A socket, or the system's number of what hinders it; 0 beside a socket.
struct Attempt
{
    FileDescriptor socket;
    int error = 0;
};

/// A listening socket at the path, open to its owner alone; accepting from it never waits.
///
/// What stands there gives way, but for a folder and for a socket that somebody listens on
/// (EADDRINUSE). A longer path than the longest is ENAMETOOLONG.
[[nodiscard]] Attempt listenAt(const QString &path);

/// A connection to the socket at the path; neither connecting nor anything done with it takes
/// longer than `seconds`. EAGAIN when nobody took the connection in that time.
[[nodiscard]] Attempt connectTo(const QString &path, double seconds);

/// Whether a process of that user is at the other end.
[[nodiscard]] bool isWith(uid_t user, const FileDescriptor &connection);

} // namespace tirlo::LocalSocket
