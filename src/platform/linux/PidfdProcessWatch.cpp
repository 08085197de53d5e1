#include "PidfdProcessWatch.h"

#include "platform/MainQueue.h"

#include <QByteArray>
#include <QFile>
#include <QList>
#include <QSocketNotifier>

#include <poll.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <cerrno>
#include <limits>
#include <optional>
#include <utility>

namespace tirlo {

namespace {

/// One process under watch; its end is told once, and not after this is gone.
class Watch
{
public:
    explicit Watch(std::function<void()> ended)
        : m_ended(std::move(ended))
    {
    }
    Watch(const Watch &) = delete;
    Watch &operator=(const Watch &) = delete;
    ~Watch() { stop(); }

    /// Waits for the descriptor, which it owns from now on.
    void start(int descriptor)
    {
        m_descriptor = descriptor;
        m_notifier = std::make_unique<QSocketNotifier>(descriptor, QSocketNotifier::Read);
        QObject::connect(m_notifier.get(), &QSocketNotifier::activated, m_notifier.get(),
                         [this] { tell(); });
    }

    void tell()
    {
        stop();
        if (const auto ended = std::exchange(m_ended, nullptr))
            ended();
    }

    [[nodiscard]] bool hasEnded() const
    {
        pollfd readable{m_descriptor, POLLIN, 0};
        return poll(&readable, 1, 0) == 1;
    }

private:
    void stop()
    {
        m_notifier.reset();
        if (m_descriptor >= 0)
            ::close(std::exchange(m_descriptor, -1));
    }

    std::function<void()> m_ended;
    int m_descriptor = -1;
    std::unique_ptr<QSocketNotifier> m_notifier;
};

int openProcess(std::int64_t pid)
{
    // The C library of older systems has no call for it.
    return int(syscall(SYS_pidfd_open, pid_t(pid), 0));
}

QByteArray fileOf(std::int64_t pid, const char *name)
{
    QFile file(QStringLiteral("/proc/%1/%2").arg(pid).arg(QLatin1String(name)));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

/// When the process with that number started; none when there is no such process.
std::optional<std::uint64_t> startOf(std::int64_t pid)
{
    constexpr qsizetype startField = 19;
    const QByteArray stat = fileOf(pid, "stat");
    // The name in brackets may hold anything, brackets among it.
    const QList<QByteArray> fields = stat.mid(stat.lastIndexOf(')') + 2).split(' ');
    if (stat.isEmpty() || fields.size() <= startField)
        return std::nullopt;
    return fields[startField].toULongLong();
}

/// True for a process of the user who runs this one; whatever it has made of itself since.
bool isOwn(std::int64_t pid)
{
    const QByteArray status = fileOf(pid, "status");
    const qsizetype at = status.indexOf("\nUid:\t");
    if (at < 0)
        return false;
    const QByteArray ids = status.mid(at + 6);
    return ids.left(ids.indexOf('\t')).toUInt() == getuid();
}

bool isFromHere(const QString &space)
{
    char own[64];
    const ssize_t length = readlink("/proc/self/ns/pid", own, sizeof own);
    return space.isEmpty() || (length > 0 && space == QLatin1String(own, length));
}

} // namespace

PidfdProcessWatch::PidfdProcessWatch(MainQueue &queue)
    : m_queue(queue)
{
}

ProcessWatch::Handle PidfdProcessWatch::watch(const ProcessId &process, std::function<void()> ended)
{
    if (process.pid <= 1 || process.pid > std::numeric_limits<pid_t>::max()
        || !isFromHere(process.space))
        return nullptr;

    auto watch = std::make_shared<Watch>(std::move(ended));
    const auto tellSoon = [&] {
        m_queue.post([guard = std::weak_ptr(watch)] {
            if (const auto alive = guard.lock())
                alive->tell();
        });
        return watch;
    };

    const int descriptor = openProcess(process.pid);
    if (descriptor < 0)
        return errno == ESRCH ? tellSoon() : nullptr;
    watch->start(descriptor);
    // The number is looked at after the descriptor was opened: one that fits now did so then.
    const auto start = startOf(process.pid);
    if (start && *start != process.start)
        return tellSoon();
    if (start ? isOwn(process.pid) : watch->hasEnded())
        return watch;
    return nullptr;
}

} // namespace tirlo
