#include "LineServer.h"

#include "LocalSocket.h"
#include "PrivateFolder.h"
#include "SocketLine.h"

#include <QFile>
#include <QFileInfo>

#include <poll.h>
#include <sys/eventfd.h>
#include <sys/socket.h>
#include <sys/stat.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <memory>
#include <utility>

namespace tirlo {

namespace {

using namespace std::chrono_literals;

constexpr std::size_t maximumReaders = 32;
constexpr timeval receiveTimeout{.tv_sec = 5, .tv_usec = 0};
constexpr int millisecondsWithoutDescriptors = 50;

/// Between two tries at least, so that nobody who always takes the file away keeps it busy.
constexpr auto shortestPause = 1s;
constexpr auto longestPause = 60s;
/// Where the system can't tell what happens to the file.
constexpr auto unwatchedPause = 4s;

} // namespace

LineServer::LineServer(QString path, Handlers handlers, uid_t owner)
    : m_path(std::move(path))
    , m_handlers(std::move(handlers))
    , m_owner(owner)
    , m_watch(m_path)
    , m_nextLook(Clock::time_point::max())
    , m_pause(shortestPause)
{
}

LineServer::~LineServer()
{
    {
        // Shutting a socket down wakes the thread that waits on it.
        const std::lock_guard guard(m_lock);
        m_isStopping = true;
        for (const int connection : m_reading)
            shutdown(connection, SHUT_RDWR);
    }
    if (m_acceptThread.joinable()) {
        eventfd_write(m_end.get(), 1);
        m_acceptThread.join();
    }
    m_readers.wait();
}

void LineServer::start()
{
    m_end = FileDescriptor(eventfd(0, EFD_CLOEXEC));
    if (!m_end.isOpen()) {
        m_handlers.listens(errno);
        return;
    }
    listen();
    if (m_error != 0)
        m_handlers.listens(m_error);
    m_acceptThread = std::thread([this] { serve(); });
}

void LineServer::listen()
{
    makePrivateFolder(QFileInfo(m_path).path());
    LocalSocket::Attempt attempt = LocalSocket::listenAt(m_path);
    m_listener = std::move(attempt.socket);
    struct stat file = {};
    if (m_listener.isOpen() && lstat(QFile::encodeName(m_path).constData(), &file) == 0) {
        m_device = file.st_dev;
        m_file = file.st_ino;
    }
    // After all that was done here, so that it does not count as a change.
    m_watch.renew();

    m_lastTry = Clock::now();
    if (attempt.error != 0) {
        m_nextLook = m_lastTry + m_pause;
        m_pause = std::min<std::chrono::seconds>(2 * m_pause, longestPause);
    } else {
        m_pause = shortestPause;
        restAfterSuccess();
        if (!isReachable())
            lookSoon();
    }
    m_error = attempt.error;
}

void LineServer::serve()
{
    for (;;) {
        std::array<pollfd, 3> waiting{{{m_end.get(), POLLIN, 0},
                                       {m_listener.get(), POLLIN, 0},
                                       {m_watch.descriptor(), POLLIN, 0}}};
        poll(waiting.data(), waiting.size(), untilLook());
        if (waiting[0].revents != 0)
            return;
        if (waiting[1].revents != 0)
            acceptNext();
        if (waiting[2].revents != 0 && m_watch.takeChange())
            lookSoon();
        if (Clock::now() >= m_nextLook)
            look();
    }
}

void LineServer::look()
{
    if (isReachable()) {
        restAfterSuccess();
        return;
    }
    const int before = m_error;
    listen();
    if (m_error == 0 || m_error != before)
        m_handlers.listens(m_error);
}

void LineServer::restAfterSuccess()
{
    m_nextLook
        = m_watch.descriptor() >= 0 ? Clock::time_point::max() : Clock::now() + unwatchedPause;
}

/// Milliseconds, as poll() counts them.
int LineServer::untilLook() const
{
    if (m_nextLook == Clock::time_point::max())
        return -1;
    const auto wait = std::chrono::ceil<std::chrono::milliseconds>(m_nextLook - Clock::now());
    return int(std::max(wait, 0ms).count());
}

void LineServer::lookSoon()
{
    m_nextLook = std::min(m_nextLook, std::max(Clock::now(), m_lastTry + shortestPause));
}

/// Whether the path leads to the socket that this server listens on.
bool LineServer::isReachable() const
{
    struct stat present = {};
    return m_listener.isOpen() && lstat(QFile::encodeName(m_path).constData(), &present) == 0
        && present.st_dev == m_device && present.st_ino == m_file;
}

/// Agents would get no answer for the rest of the run if one signal, one peer that hung up early or
/// a moment without free descriptors ended it. Without descriptors the connection stays queued and
/// accepting fails at once, so that takes a pause.
void LineServer::acceptNext()
{
    FileDescriptor connection(accept4(m_listener.get(), nullptr, nullptr, SOCK_CLOEXEC));
    if (connection.isOpen()) {
        admit(std::move(connection));
        return;
    }
    if (errno == EINTR || errno == ECONNABORTED || errno == EAGAIN)
        return;
    pollfd end{m_end.get(), POLLIN, 0};
    poll(&end, 1, millisecondsWithoutDescriptors);
}

void LineServer::admit(FileDescriptor connection)
{
    if (!LocalSocket::isWith(m_owner, connection))
        return;
    {
        const std::lock_guard guard(m_lock);
        if (m_isStopping || m_reading.size() >= maximumReaders)
            return;
        m_reading.insert(connection.get());
    }
    // Work must be copyable.
    const auto shared = std::make_shared<FileDescriptor>(std::move(connection));
    m_readers.start([this, shared] { read(std::move(*shared)); });
}

/// Only until its line is there does a connection count as being read.
void LineServer::read(FileDescriptor connection)
{
    setsockopt(connection.get(), SOL_SOCKET, SO_RCVTIMEO, &receiveTimeout, sizeof receiveTimeout);
    const QByteArray line = receiveLine(connection.get());
    {
        const std::lock_guard guard(m_lock);
        m_reading.erase(connection.get());
    }
    m_handlers.line(std::move(connection), line);
}

} // namespace tirlo
