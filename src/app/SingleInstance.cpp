#include "SingleInstance.h"

#include "platform/LocalSocket.h"
#include "platform/PrivateFolder.h"

#include <QFile>

#include <fcntl.h>
#include <sys/file.h>

#include <cerrno>

namespace tirlo {

namespace {

constexpr double probeSeconds = 0.2;

FileDescriptor opened(const QString &path, int flags)
{
    return FileDescriptor(
        open(QFile::encodeName(path).constData(), flags | O_CLOEXEC | O_NOFOLLOW, 0600));
}

/// What is locked: a file of ours, or a folder where there can't be one.
FileDescriptor lockable(const Paths &paths, int flags)
{
    FileDescriptor found = opened(paths.lockPath(), flags);
    for (const QString &folder : {paths.supportFolder(), paths.home()}) {
        if (!found.isOpen())
            found = opened(folder, O_RDONLY | O_DIRECTORY);
    }
    return found;
}

} // namespace

SingleInstance::SingleInstance(const Paths &paths)
    : m_paths(paths)
{
}

bool SingleInstance::claim()
{
    makePrivateFolder(m_paths.supportFolder());
    m_lock = lockable(m_paths, O_RDWR | O_CREAT);
    if (flock(m_lock.get(), LOCK_EX | LOCK_NB) != 0 && errno == EWOULDBLOCK)
        return false;
    if (!LocalSocket::connectTo(m_paths.commandSocketPath(), probeSeconds).socket.isOpen())
        return true;
    m_lock.close();
    return false;
}

bool SingleInstance::isClaimed(const Paths &paths)
{
    const FileDescriptor lock = lockable(paths, O_RDONLY);
    return flock(lock.get(), LOCK_SH | LOCK_NB) != 0 && errno == EWOULDBLOCK;
}

} // namespace tirlo
