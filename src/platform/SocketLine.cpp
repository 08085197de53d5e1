#include "SocketLine.h"

#include <sys/socket.h>

#include <array>
#include <cerrno>
#include <cstring>

namespace tirlo {

namespace {

constexpr qsizetype chunkSize = 4096;
constexpr qsizetype longestLine = 0x100000;

/// Repeats a call on a socket for as long as a signal interrupts it.
template<typename Call>
ssize_t uninterrupted(Call call)
{
    for (;;) {
        const ssize_t result = call();
        if (result >= 0 || errno != EINTR)
            return result;
    }
}

} // namespace

QByteArray receiveLine(int socket)
{
    QByteArray line;
    std::array<char, chunkSize> chunk;
    while (line.size() <= longestLine) {
        const ssize_t count
            = uninterrupted([&] { return recv(socket, chunk.data(), chunk.size(), 0); });
        if (count < 1)
            break;
        const void *end = std::memchr(chunk.data(), '\n', std::size_t(count));
        if (end) {
            line.append(chunk.data(), static_cast<const char *>(end) - chunk.data());
            break;
        }
        line.append(chunk.data(), count);
    }
    return line;
}

void sendLine(int socket, const QByteArray &text)
{
    const QByteArray bytes = text + '\n';
    qsizetype sent = 0;
    while (sent < bytes.size()) {
        const ssize_t count = uninterrupted([&] {
            return send(socket, bytes.constData() + sent, std::size_t(bytes.size() - sent),
                        MSG_NOSIGNAL);
        });
        if (count < 1)
            return;
        sent += count;
    }
}

} // namespace tirlo
