#include "RunningProgram.h"

#include "SingleInstance.h"
#include "platform/LocalSocket.h"
#include "platform/SocketLine.h"

#include <poll.h>
#include <unistd.h>

#include <cerrno>
#include <chrono>

namespace tirlo::RunningProgram {

namespace {

using Clock = std::chrono::steady_clock;

constexpr std::chrono::seconds answerTime(2);
constexpr int endMilliseconds = 10000;
constexpr int pauseMilliseconds = 50;

double secondsUntil(Clock::time_point end)
{
    return std::chrono::duration<double>(end - Clock::now()).count();
}

/// Its end closes the connection.
Answer waitForEnd(const FileDescriptor &connection)
{
    pollfd end{connection.get(), POLLIN, 0};
    return poll(&end, 1, endMilliseconds) > 0 ? Answer::done : Answer::silent;
}

Answer answerOn(const FileDescriptor &connection, Command command)
{
    if (!LocalSocket::isWith(getuid(), connection))
        return Answer::notAllowed;
    sendLine(connection.get(), rawText(command).toLatin1());
    const QByteArray reply = receiveLine(connection.get());
    if (reply.isEmpty())
        return Answer::silent;
    if (reply != "ok")
        return Answer::unknown;
    return command == Command::quit ? waitForEnd(connection) : Answer::done;
}

Answer tryOnce(const Paths &paths, Command command, double seconds)
{
    const auto [connection, error] = LocalSocket::connectTo(paths.commandSocketPath(), seconds);
    if (connection.isOpen())
        return answerOn(connection, command);
    if (error == EACCES || error == EPERM)
        return Answer::notAllowed;
    // It may be about to listen.
    return SingleInstance::isClaimed(paths) ? Answer::silent : Answer::notRunning;
}

} // namespace

Answer ask(const Paths &paths, Command command)
{
    const Clock::time_point end = Clock::now() + answerTime;
    for (;;) {
        const Answer answer = tryOnce(paths, command, secondsUntil(end));
        if (answer != Answer::silent || Clock::now() >= end)
            return answer;
        poll(nullptr, 0, pauseMilliseconds);
    }
}

const char *complaint(Answer answer)
{
    switch (answer) {
    case Answer::done:
        break;
    case Answer::notRunning:
        return "Tirlo is not running.";
    case Answer::silent:
        return "Tirlo is running but does not answer.";
    case Answer::notAllowed:
        return "Tirlo can only be told what to do by the user who started it.";
    case Answer::unknown:
        return "the Tirlo that is running is another version, which can't do that.";
    }
    return "";
}

} // namespace tirlo::RunningProgram
