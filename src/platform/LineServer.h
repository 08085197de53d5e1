#pragma once

#include "EntryWatch.h"
#include "FileDescriptor.h"
#include "ThreadGroup.h"

#include <QByteArray>
#include <QString>

#include <sys/types.h>
#include <unistd.h>

#include <chrono>
#include <functional>
#include <mutex>
#include <set>
#include <thread>

namespace tirlo {

/// Takes the connections on a local stream socket and reads one line from each.
///
/// A thread of its own accepts, a short one a connection reads. A socket file that is lost or
/// replaced is made anew, and what keeps the server from listening is tried again: when something
/// happens around the file, and otherwise ever more seldom.
class LineServer
{
public:
    struct Handlers
    {
        /// A connection and what came on it up to the line feed, on a thread of its own.
        std::function<void(FileDescriptor connection, const QByteArray &line)> line;
        /// What keeps it from listening, as the system's number, when that changes; 0 each time
        /// that it listens again. On any thread.
        std::function<void(int error)> listens;
    };

    /// A server for the socket at `path` that serves processes of the user `owner` only.
    LineServer(QString path, Handlers handlers, uid_t owner = getuid());

    /// Ends all threads.
    ~LineServer();

    LineServer(const LineServer &) = delete;
    LineServer &operator=(const LineServer &) = delete;

    /// Begins to listen; called once. When it returns it listens, or has said why not.
    void start();

private:
    using Clock = std::chrono::steady_clock;

    void listen();
    void serve();
    [[nodiscard]] int untilLook() const;
    void look();
    void lookSoon();
    void restAfterSuccess();
    [[nodiscard]] bool isReachable() const;
    void acceptNext();
    void admit(FileDescriptor connection);
    void read(FileDescriptor connection);

    const QString m_path;
    const Handlers m_handlers;
    const uid_t m_owner;

    // Of the thread that accepts, once it is there.
    FileDescriptor m_listener;
    dev_t m_device = 0;
    ino_t m_file = 0;
    EntryWatch m_watch;
    int m_error = 0;
    Clock::time_point m_lastTry;
    Clock::time_point m_nextLook;
    std::chrono::seconds m_pause;

    /// Turns readable when the server is to end.
    FileDescriptor m_end;
    std::thread m_acceptThread;

    std::mutex m_lock;
    /// The connections being read; guarded by the lock, as is `m_isStopping`.
    std::set<int> m_reading;
    bool m_isStopping = false;

    ThreadGroup m_readers;
};

} // namespace tirlo
