#include "HookSocketServer.h"

#include "SocketLine.h"
#include "core/Json.h"
#include "platform/MainQueue.h"

#include <QDebug>
#include <QFile>
#include <QJsonDocument>

#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>

#include <cerrno>
#include <chrono>
#include <cstring>
#include <utility>

namespace tirlo {

namespace {

constexpr qsizetype longestPath = 104;
constexpr int backlog = 32;
constexpr std::size_t maximumReaders = 32;
constexpr timeval receiveTimeout{.tv_sec = 5, .tv_usec = 0};
constexpr std::chrono::milliseconds pauseWithoutDescriptors(50);

const QByteArray okReply = QByteArrayLiteral(R"({"ok":true})");

/// A listening socket at the path, or none.
FileDescriptor listenAt(const QString &path)
{
    const QByteArray name = QFile::encodeName(path);
    if (name.size() > longestPath) {
        qWarning("HookServer: socket path too long (%lld bytes, max %lld): %s",
                 qlonglong(name.size()), qlonglong(longestPath), name.constData());
        return {};
    }

    unlink(name.constData());
    FileDescriptor listener(socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0));
    if (!listener.isOpen())
        return {};

    // The file takes this mode over, so that it is never open to others whatever the umask.
    fchmod(listener.get(), S_IRUSR | S_IWUSR);
    sockaddr_un address{};
    static_assert(sizeof address.sun_path > longestPath);
    address.sun_family = AF_UNIX;
    std::memcpy(address.sun_path, name.constData(), std::size_t(name.size()));
    if (bind(listener.get(), reinterpret_cast<const sockaddr *>(&address), sizeof address) != 0)
        return {};
    chmod(name.constData(), S_IRUSR | S_IWUSR);
    if (listen(listener.get(), backlog) != 0)
        return {};
    return listener;
}

bool isFrom(uid_t owner, const FileDescriptor &connection)
{
    ucred peer{};
    socklen_t size = sizeof peer;
    return getsockopt(connection.get(), SOL_SOCKET, SO_PEERCRED, &peer, &size) == 0
        && peer.uid == owner;
}

} // namespace

HookSocketServer::HookSocketServer(MainQueue &queue, QString path, Handlers handlers, uid_t owner)
    : m_queue(queue)
    , m_path(std::move(path))
    , m_owner(owner)
    , m_handlers(std::make_shared<const Handlers>(std::move(handlers)))
{
}

HookSocketServer::~HookSocketServer()
{
    {
        // Shutting a socket down wakes the thread that waits on it.
        const std::lock_guard guard(m_lock);
        m_isStopping = true;
        shutdown(m_listener.get(), SHUT_RDWR);
        for (const int connection : m_reading)
            shutdown(connection, SHUT_RDWR);
    }
    m_stopping.notify_all();
    if (m_acceptThread.joinable())
        m_acceptThread.join();
    m_readers.wait();
}

void HookSocketServer::start()
{
    m_listener = listenAt(m_path);
    if (m_listener.isOpen())
        m_acceptThread = std::thread([this] { acceptConnections(); });
}

void HookSocketServer::acceptConnections()
{
    for (;;) {
        FileDescriptor connection(accept4(m_listener.get(), nullptr, nullptr, SOCK_CLOEXEC));
        if (connection.isOpen())
            admit(std::move(connection));
        else if (!canAcceptAfter(errno))
            return;
    }
}

/// Tells passing troubles from the end of the listening socket, which ends the accept thread.
///
/// Agents would get no answer for the rest of the run if one signal, one peer that hung up early or
/// a moment without free descriptors ended it too. Without descriptors the connection stays queued
/// and accepting fails at once, so that takes a pause.
bool HookSocketServer::canAcceptAfter(int error)
{
    switch (error) {
    case EINTR:
    case ECONNABORTED:
        return true;
    case EMFILE:
    case ENFILE:
    case ENOBUFS:
    case ENOMEM: {
        std::unique_lock guard(m_lock);
        return !m_stopping.wait_for(guard, pauseWithoutDescriptors,
                                    [this] { return m_isStopping; });
    }
    default:
        return false;
    }
}

void HookSocketServer::admit(FileDescriptor connection)
{
    if (!isFrom(m_owner, connection))
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
void HookSocketServer::read(FileDescriptor connection)
{
    setsockopt(connection.get(), SOL_SOCKET, SO_RCVTIMEO, &receiveTimeout, sizeof receiveTimeout);
    const QByteArray line = receiveLine(connection.get());
    {
        const std::lock_guard guard(m_lock);
        m_reading.erase(connection.get());
    }
    handle(std::move(connection), line);
}

void HookSocketServer::handle(FileDescriptor connection, const QByteArray &line)
{
    const QJsonDocument document = QJsonDocument::fromJson(line);
    if (!document.isObject()) {
        sendLine(connection.get(), okReply);
        return;
    }

    QJsonObject payload = document.object();
    const QString name = Json::text(payload, QLatin1String("hook_event_name")).value_or(QString());
    const std::weak_ptr<const Handlers> handlers = m_handlers;
    if (name == QLatin1String("PermissionRequest")) {
        const auto shared = std::make_shared<FileDescriptor>(std::move(connection));
        m_queue.post([handlers, shared, payload = std::move(payload)] {
            if (const auto present = handlers.lock())
                present->permissionRequest(std::move(*shared), payload);
        });
        return;
    }
    m_queue.post([handlers, name, payload = std::move(payload)] {
        if (const auto present = handlers.lock())
            present->event(name, payload);
    });
    sendLine(connection.get(), okReply);
}

} // namespace tirlo
