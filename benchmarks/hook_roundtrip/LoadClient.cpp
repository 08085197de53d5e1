#include "LoadClient.h"

#include "hooks/FileDescriptor.h"
#include "hooks/SocketLine.h"

#include <QFile>

#include <sys/socket.h>
#include <sys/un.h>

#include <chrono>
#include <cstring>
#include <thread>
#include <vector>

namespace tirlo {

namespace {

using Clock = std::chrono::steady_clock;

const QByteArray event
    = R"({"hook_event_name":"PreToolUse","session_id":"a3c1","cwd":"/w/project",)"
      R"("term_program":"vscode","bundle_id":"","iterm_session_id":"",)"
      R"("term_session_id":"","tool_name":"Bash",)"
      R"("tool_input":{"command":"npm run test -- --watch"}})";

bool exchange(const sockaddr_un &address)
{
    const FileDescriptor connection(socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0));
    const auto *name = reinterpret_cast<const sockaddr *>(&address);
    if (connect(connection.get(), name, sizeof address) != 0)
        return false;
    sendLine(connection.get(), event);
    return !receiveLine(connection.get()).isEmpty();
}

} // namespace

QByteArray runLoadClient(const QString &socketPath, const Load &load)
{
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    const QByteArray name = QFile::encodeName(socketPath);
    std::memcpy(address.sun_path, name.constData(), std::size_t(name.size()));

    const int total = load.eventsPerSecond * load.seconds;
    std::vector<qint64> microseconds(std::size_t(total), -1);
    const Clock::time_point start = Clock::now() + std::chrono::milliseconds(100);
    const auto period = std::chrono::nanoseconds(std::chrono::seconds(1)) / load.eventsPerSecond;

    std::vector<std::thread> threads;
    threads.reserve(std::size_t(load.threads));
    for (int first = 0; first < load.threads; ++first) {
        threads.emplace_back([&, first] {
            for (int i = first; i < total; i += load.threads) {
                const Clock::time_point due = start + i * period;
                std::this_thread::sleep_until(due);
                if (!exchange(address))
                    continue;
                microseconds[std::size_t(i)]
                    = std::chrono::duration_cast<std::chrono::microseconds>(Clock::now() - due)
                          .count();
            }
        });
    }
    for (std::thread &thread : threads)
        thread.join();

    QByteArray lines;
    for (const qint64 value : microseconds)
        lines += QByteArray::number(value) + '\n';
    return lines;
}

} // namespace tirlo
