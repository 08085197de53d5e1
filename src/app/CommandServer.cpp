#include "CommandServer.h"

#include "platform/MainQueue.h"
#include "platform/SocketLine.h"

#include <utility>

namespace tirlo {

namespace {

const QByteArray doneReply = QByteArrayLiteral("ok");
const QByteArray unknownReply = QByteArrayLiteral("unknown");

} // namespace

CommandServer::CommandServer(MainQueue &queue, const QString &socketPath, Perform perform)
    : m_queue(queue)
    , m_perform(std::make_shared<const Perform>(std::move(perform)))
    // What keeps it from listening keeps agents out as well, and is told of there.
    , m_server(socketPath,
               {.line = [this](FileDescriptor connection,
                               const QByteArray &line) { take(std::move(connection), line); },
                .listens = [](int) {}})
{
}

void CommandServer::take(FileDescriptor connection, const QByteArray &line)
{
    const std::optional<Command> command = fromRawText<Command>(QString::fromLatin1(line));
    if (!command) {
        sendLine(connection.get(), unknownReply);
        return;
    }
    const std::weak_ptr<const Perform> perform = m_perform;
    const auto shared = std::make_shared<FileDescriptor>(std::move(connection));
    m_queue.post([perform, shared, command = *command] {
        const auto present = perform.lock();
        if (!present)
            return;
        (*present)(command);
        sendLine(shared->get(), doneReply);
        if (command == Command::quit)
            shared->release();
    });
}

} // namespace tirlo
