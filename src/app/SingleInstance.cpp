#include "SingleInstance.h"

#include "platform/PrivateFolder.h"

#include <QCoreApplication>
#include <QFile>
#include <QSysInfo>

#include <csignal>
#include <sys/types.h>

namespace tirlo {

SingleInstance::SingleInstance(const Paths &paths)
    : m_lock(paths.supportFolder() + QStringLiteral("/tirlo.lock"))
{
    makePrivateFolder(paths.supportFolder());
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
    if (processId == QCoreApplication::applicationPid()) {
        // Left over from another boot by a process that happened to have our number.
        QFile::remove(m_lock.fileName());
        return m_lock.tryLock();
    }
    // A home that is shared between machines may hold the lock of another one's program.
    if (hostName != QSysInfo::machineHostName())
        return true;
    kill(pid_t(processId), SIGUSR1);
    return false;
}

} // namespace tirlo
