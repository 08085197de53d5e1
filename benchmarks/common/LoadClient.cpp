#include "LoadClient.h"

#include "hooks/Peer.h"

#include <chrono>
#include <thread>

namespace tirlo {

namespace {

using Clock = std::chrono::steady_clock;

constexpr qint64 unsent = -2;

bool exchange(const QString &socketPath, const QByteArray &line)
{
    return Peer::connectedTo(socketPath).send(line).receiveAll().endsWith('\n');
}

} // namespace

QByteArray Load::plainEvent()
{
    return R"({"hook_event_name":"PreToolUse","session_id":"a3c1","cwd":"/w/project",)"
           R"("term_program":"vscode","bundle_id":"","iterm_session_id":"",)"
           R"("term_session_id":"","tool_name":"Bash",)"
           R"("tool_input":{"command":"npm run test -- --watch"}})"
           "\n";
}

std::vector<qint64> runLoadClient(const QString &socketPath, const Load &load,
                                  const std::stop_token &stop)
{
    const int total = load.eventsPerSecond * load.seconds;
    std::vector<qint64> microseconds(std::size_t(total), unsent);
    const Clock::time_point start = Clock::now() + std::chrono::milliseconds(100);
    const auto period = std::chrono::nanoseconds(std::chrono::seconds(1)) / load.eventsPerSecond;

    std::vector<std::thread> threads;
    threads.reserve(std::size_t(load.threads));
    for (int first = 0; first < load.threads; ++first) {
        threads.emplace_back([&, first] {
            for (int i = first; i < total && !stop.stop_requested(); i += load.threads) {
                const Clock::time_point due = start + i * period;
                std::this_thread::sleep_until(due);
                const bool isAnswered = exchange(socketPath, load.lineOf(i));
                const auto taken = Clock::now() - due;
                microseconds[std::size_t(i)] = isAnswered
                    ? std::chrono::duration_cast<std::chrono::microseconds>(taken).count()
                    : -1;
            }
        });
    }
    for (std::thread &thread : threads)
        thread.join();
    std::erase(microseconds, unsent);
    return microseconds;
}

} // namespace tirlo
