#pragma once

#include "platform/LineServer.h"

#include <QJsonObject>
#include <QString>

#include <sys/types.h>
#include <unistd.h>

#include <functional>
#include <memory>

namespace tirlo {

class MainQueue;

/// Takes the connections of hook relays on a local stream socket and reads one JSON line from each.
///
/// They are taken and read on other threads, so that a busy main thread never keeps an agent
/// waiting: an event is answered before it is handled. Only the handlers run on the main thread;
/// work that is on its way there when the server goes does nothing.
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
        /// What keeps agents from reaching the socket, in words that continue "Agents can't reach
        /// Tirlo:"; "" each time that they can again.
        std::function<void(const QString &trouble)> trouble;
    };

    /// A server for the socket at `path` that serves processes of the user `owner` only.
    HookSocketServer(MainQueue &queue, QString path, Handlers handlers, uid_t owner = getuid());

    /// Begins to listen; called once. Standard error tells what keeps it from that.
    void start();

private:
    void handle(FileDescriptor connection, const QByteArray &line);
    void tell(int error);

    MainQueue &m_queue;
    const QString m_path;
    /// Shared so that work on its way to the main thread can tell that the server is gone.
    std::shared_ptr<const Handlers> m_handlers;
    LineServer m_server;
};

} // namespace tirlo
