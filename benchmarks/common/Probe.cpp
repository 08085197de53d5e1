#include "Probe.h"

#include <QDir>
#include <QFile>
#include <QStringList>
#include <QThread>

#include <unistd.h>

namespace {

QByteArray contentOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

/// The number behind a key such as "VmRSS:" in a file of the kernel's.
double numberOf(const QByteArray &content, const char *key)
{
    for (const QByteArray &line : content.split('\n')) {
        if (line.startsWith(key))
            return line.mid(qsizetype(qstrlen(key))).simplified().split(' ').first().toDouble();
    }
    return 0;
}

} // namespace

Usage usageOf(qint64 processId)
{
    const QString folder = QStringLiteral("/proc/%1/").arg(processId);
    Usage usage;

    // The fields behind the name, which may hold blanks itself, end in a bracket.
    const QByteArray stat = contentOf(folder + "stat");
    const QList<QByteArray> fields = stat.mid(stat.lastIndexOf(')') + 2).split(' ');
    if (fields.size() > 12)
        usage.cpuSeconds
            = (fields[11].toDouble() + fields[12].toDouble()) / double(sysconf(_SC_CLK_TCK));

    const QString tasks = folder + "task/";
    for (const QString &task : QDir(tasks).entryList(QDir::Dirs | QDir::NoDotAndDotDot)) {
        const QByteArray status = contentOf(tasks + task + "/status");
        usage.contextSwitches += numberOf(status, "voluntary_ctxt_switches:")
            + numberOf(status, "nonvoluntary_ctxt_switches:");
    }

    constexpr double kibPerMib = 1024;
    usage.residentMemory = numberOf(contentOf(folder + "status"), "VmRSS:") / kibPerMib;
    usage.proportionalMemory = numberOf(contentOf(folder + "smaps_rollup"), "Pss:") / kibPerMib;
    return usage;
}

Usage usageOver(qint64 processId, int seconds)
{
    const Usage before = usageOf(processId);
    QThread::sleep(static_cast<unsigned long>(seconds));
    Usage after = usageOf(processId);
    after.cpuSeconds -= before.cpuSeconds;
    after.contextSwitches -= before.contextSwitches;
    return after;
}
