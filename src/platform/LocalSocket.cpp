#include "LocalSocket.h"

#include <QFile>

#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>

#include <algorithm>
#include <cerrno>
#include <cmath>
#include <cstring>

namespace tirlo::LocalSocket {

namespace {

constexpr int backlog = 32;
constexpr double probeSeconds = 0.1;
/// A time of 0 would stand for no limit.
constexpr double shortestSeconds = 0.001;

sockaddr_un addressOf(const QByteArray &name)
{
    sockaddr_un address{};
    static_assert(sizeof address.sun_path > longestPath);
    address.sun_family = AF_UNIX;
    std::memcpy(address.sun_path, name.constData(), std::size_t(name.size()));
    return address;
}

timeval timeOf(double seconds)
{
    const double whole = std::floor(std::max(seconds, shortestSeconds));
    return {.tv_sec = time_t(whole),
            .tv_usec = suseconds_t((std::max(seconds, shortestSeconds) - whole) * 1e6)};
}

/// Whether somebody listens there, who may be too busy to answer. A link is nobody's socket.
bool isAlive(const QString &path, const QByteArray &name)
{
    struct stat present = {};
    if (lstat(name.constData(), &present) != 0 || !S_ISSOCK(present.st_mode))
        return false;
    const Attempt probe = connectTo(path, probeSeconds);
    return probe.socket.isOpen() || probe.error == EAGAIN;
}

Attempt failed()
{
    return {.socket = {}, .error = errno};
}

} // namespace

Attempt listenAt(const QString &path)
{
    const QByteArray name = QFile::encodeName(path);
    if (name.size() > longestPath)
        return {.socket = {}, .error = ENAMETOOLONG};
    if (isAlive(path, name))
        return {.socket = {}, .error = EADDRINUSE};
    if (unlink(name.constData()) != 0 && errno != ENOENT)
        return failed();

    FileDescriptor listener(socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0));
    if (!listener.isOpen())
        return failed();
    // The file takes this mode over, so that it is never open to others whatever the umask.
    fchmod(listener.get(), S_IRUSR | S_IWUSR);
    const sockaddr_un address = addressOf(name);
    if (bind(listener.get(), reinterpret_cast<const sockaddr *>(&address), sizeof address) != 0)
        return failed();
    chmod(name.constData(), S_IRUSR | S_IWUSR);
    if (listen(listener.get(), backlog) != 0)
        return failed();
    return {.socket = std::move(listener)};
}

Attempt connectTo(const QString &path, double seconds)
{
    const QByteArray name = QFile::encodeName(path);
    if (name.size() > longestPath)
        return {.socket = {}, .error = ENAMETOOLONG};
    FileDescriptor connection(socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0));
    if (!connection.isOpen())
        return failed();
    const timeval limit = timeOf(seconds);
    setsockopt(connection.get(), SOL_SOCKET, SO_RCVTIMEO, &limit, sizeof limit);
    setsockopt(connection.get(), SOL_SOCKET, SO_SNDTIMEO, &limit, sizeof limit);
    const sockaddr_un address = addressOf(name);
    if (connect(connection.get(), reinterpret_cast<const sockaddr *>(&address), sizeof address)
        != 0)
        return failed();
    return {.socket = std::move(connection)};
}

bool isWith(uid_t user, const FileDescriptor &connection)
{
    ucred peer{};
    socklen_t size = sizeof peer;
    return getsockopt(connection.get(), SOL_SOCKET, SO_PEERCRED, &peer, &size) == 0
        && peer.uid == user;
}

} // namespace tirlo::LocalSocket
