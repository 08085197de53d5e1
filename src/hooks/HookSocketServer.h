#pragma once

#include "FileDescriptor.h"
#include "ThreadGroup.h"

#include <QJsonObject>
#include <QString>

#include <sys/types.h>
#include <unistd.h>

#include <condition_variable>
#include <functional>
#include <memory>
#include <mutex>
#include <set>
#include <thread>

namespace tirlo {

class MainQueue;

/// Takes the connections of hook relays on a local stream socket and reads one JSON line from each.
///
/// A thread of its own accepts, a short one a connection reads, so that a busy main thread never
/// keeps an agent waiting: an event is answered before it is handled. Only the handlers run on the
/// main thread.
class HookSocketServer
{
public:
    struct Handlers
    {
        /// An event with its name, "" when it has none.
        std::function<void(const QString &name, const QJsonObject &payload)> event;
        /// A permission request; the connection stays open for the answer.
        std::function<void(FileDescriptor connection, const QJsonObject &payload)>
            permissionRequest;
    };

    /// A server for the socket at `path` that serves processes of the user `owner` only.
    HookSocketServer(MainQueue &queue, QString path, Handlers handlers, uid_t owner = getuid());

    /// Ends all threads; work that is still posted to the main thread does nothing.
    ~HookSocketServer();

    /// Begins to listen; called once. Where that fails there is no server, and nothing else fails.
    void start();

private:
    void acceptConnections();
    [[nodiscard]] bool canAcceptAfter(int error);
    void admit(FileDescriptor connection);
    void read(FileDescriptor connection);
    void handle(FileDescriptor connection, const QByteArray &line);

    MainQueue &m_queue;
    const QString m_path;
    const uid_t m_owner;
    /// Shared so that work on its way to the main thread can tell that the server is gone.
    std::shared_ptr<const Handlers> m_handlers;

    FileDescriptor m_listener;
    std::thread m_acceptThread;

    std::mutex m_lock;
    /// The connections being read; guarded by the lock, as is `m_isStopping`.
    std::set<int> m_reading;
    bool m_isStopping = false;
    std::condition_variable m_stopping;

    ThreadGroup m_readers;
};

} // namespace tirlo
