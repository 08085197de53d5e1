#pragma once

#include "Command.h"
#include "platform/LineServer.h"

#include <functional>
#include <memory>

namespace tirlo {

class MainQueue;

/// Takes the commands that other starts of the program send to this one, on a socket of their own.
///
/// A connection brings one command by its name and gets "ok" once it has been done, or another word
/// when it is not known. After "quit" the connection stays open until the process is gone.
class CommandServer
{
public:
    /// Calls `perform` on the main thread for each command.
    CommandServer(MainQueue &queue, const QString &socketPath,
                  std::function<void(Command)> perform);

    /// Begins to take commands; called once.
    void start() { m_server.start(); }

private:
    using Perform = std::function<void(Command)>;

    void take(FileDescriptor connection, const QByteArray &line);

    MainQueue &m_queue;
    /// Shared so that a command on its way to the main thread can tell that the server is gone.
    std::shared_ptr<const Perform> m_perform;
    LineServer m_server;
};

} // namespace tirlo
