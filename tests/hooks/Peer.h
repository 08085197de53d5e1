#pragma once

#include "platform/FileDescriptor.h"

#include <QByteArray>
#include <QFile>
#include <QString>

#include <poll.h>
#include <sys/socket.h>
#include <sys/un.h>

#include <array>
#include <cstring>
#include <utility>

namespace tirlo {

/// The agent's side of a hook connection.
class Peer
{
public:
    explicit Peer(FileDescriptor socket)
        : m_socket(std::move(socket))
    {
    }

    /// A connection to the socket at the path; broken when nobody listens.
    static Peer connectedTo(const QString &path)
    {
        Peer peer(FileDescriptor(socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0)));
        const sockaddr_un to = address(path);
        if (connect(peer.m_socket.get(), reinterpret_cast<const sockaddr *>(&to), sizeof to) != 0)
            peer.close();
        return peer;
    }

    static sockaddr_un address(const QString &path)
    {
        sockaddr_un address{};
        address.sun_family = AF_UNIX;
        const QByteArray name = QFile::encodeName(path);
        std::memcpy(address.sun_path, name.constData(), std::size_t(name.size()));
        return address;
    }

    /// Two ends of one connection: the agent's and the server's.
    static std::pair<Peer, FileDescriptor> pair()
    {
        std::array<int, 2> ends{-1, -1};
        socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, ends.data());
        return {Peer(FileDescriptor(ends[0])), FileDescriptor(ends[1])};
    }

    [[nodiscard]] bool isConnected() const { return m_socket.isOpen(); }

    Peer &send(const QByteArray &bytes)
    {
        // All at once: the socket blocks until the other side has taken it or is gone.
        static_cast<void>(
            ::send(m_socket.get(), bytes.constData(), std::size_t(bytes.size()), MSG_NOSIGNAL));
        return *this;
    }

    Peer &endOfStream()
    {
        shutdown(m_socket.get(), SHUT_WR);
        return *this;
    }

    /// All that comes until the other side closes; "..." at the end if it doesn't in 10 seconds.
    QByteArray receiveAll(int milliseconds = 10000)
    {
        QByteArray all;
        for (;;) {
            pollfd waiting{m_socket.get(), POLLIN, 0};
            if (poll(&waiting, 1, milliseconds) < 1)
                return all + "...";
            std::array<char, 4096> chunk;
            const ssize_t count = recv(m_socket.get(), chunk.data(), chunk.size(), 0);
            if (count < 1)
                return all;
            all.append(chunk.data(), count);
        }
    }

    /// True once there is something to read, an end of stream included.
    [[nodiscard]] bool isReadable() const
    {
        pollfd waiting{m_socket.get(), POLLIN, 0};
        return poll(&waiting, 1, 0) == 1;
    }

    void close() { m_socket.close(); }

private:
    FileDescriptor m_socket;
};

} // namespace tirlo
