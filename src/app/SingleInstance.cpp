#include "SingleInstance.h"

#include <QDir>

#include <csignal>
#include <sys/types.h>

namespace tirlo {

SingleInstance::SingleInstance(const Paths &paths)
    : m_lock(paths.supportFolder() + QStringLiteral("/tirlo.lock"))
{
    QDir().mkpath(paths.supportFolder());
    // A lock is stale when its process is gone, however long it has been held.
    m_lock.setStaleLockTime(0);
}

bool SingleInstance::claim()
{
    if (m_lock.tryLock() || m_lock.error() != QLockFile::LockFailedError)
        return true;

    qint64 processId = 0;
    QString hostName;
    QString applicationName;
    if (!m_lock.getLockInfo(&processId, &hostName, &applicationName) || processId <= 0)
        return true;
    kill(pid_t(processId), SIGUSR1);
    return false;
}

} // namespace tirlo
