#include "EchoServer.h"

#include "platform/SocketLine.h"

#include <QFile>

#include <sys/socket.h>
#include <sys/un.h>

#include <cstring>
#include <utility>

namespace tirlo {

EchoServer::EchoServer(const QString &path)
    : m_listener(socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0))
{
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    const QByteArray name = QFile::encodeName(path);
    std::memcpy(address.sun_path, name.constData(), std::size_t(name.size()));
    if (bind(m_listener.get(), reinterpret_cast<const sockaddr *>(&address), sizeof address) != 0
        || listen(m_listener.get(), 32) != 0)
        qFatal("can't listen at %s", name.constData());

    m_acceptThread = std::thread([this] {
        for (;;) {
            FileDescriptor connection(accept4(m_listener.get(), nullptr, nullptr, SOCK_CLOEXEC));
            if (!connection.isOpen())
                return;
            std::thread([taken = std::move(connection)] {
                sendLine(taken.get(), receiveLine(taken.get()));
            }).detach();
        }
    });
}

EchoServer::~EchoServer()
{
    shutdown(m_listener.get(), SHUT_RDWR);
    m_acceptThread.join();
}

} // namespace tirlo
