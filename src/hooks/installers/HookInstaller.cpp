#include "HookInstaller.h"

#include "HookError.h"
#include "core/Paths.h"
#include "platform/MainQueue.h"

#include <QCryptographicHash>
#include <QFile>
#include <QLocale>

namespace tirlo {

HookInstaller::HookInstaller(const Paths &paths, const HookTable &table, JsonSlashes slashes,
                             const MainQueue &clock)
    : m_file(paths, paths.agentSettingsPath(AgentCatalog::definition(table.agent)))
    , m_table(table)
    , m_scriptWord(paths.hookScriptWord())
    , m_slashes(slashes)
    , m_clock(clock)
{
}

bool HookInstaller::hooksInstalled() const
{
    const auto settings = m_file.readLeniently();
    return settings && holdsHooks(*settings);
}

void HookInstaller::writeHooks()
{
    if (!m_pending)
        return;
    const QString backup = backUp(m_pending->fingerprint);
    try {
        m_file.write(m_pending->data);
    } catch (const HookError &) {
        // The file is still what the backup holds.
        if (!backup.isEmpty())
            QFile::remove(backup);
        throw;
    }
    m_pending.reset();
}

HookChange HookInstaller::keepPending(const AgentFile::Contents &present,
                                      const JsonObject &settings)
{
    const QByteArray data = serialised(settings);
    m_pending = Pending{data, fingerprintOf(present.bytes)};
    const QByteArray relaid = present.object ? serialised(*present.object) : present.bytes;
    return {QString::fromUtf8(data), QString::fromUtf8(relaid),
            present.object && present.bytes.trimmed() != relaid};
}

std::vector<HookGroup> HookInstaller::groups() const
{
    return HookTables::groupsOf(m_table, m_scriptWord);
}

QByteArray HookInstaller::fingerprintOf(const QByteArray &bytes)
{
    return QCryptographicHash::hash(bytes, QCryptographicHash::Sha256).toHex();
}

QByteArray HookInstaller::serialised(const JsonObject &settings) const
{
    return writeJson({settings}, m_slashes);
}

QString HookInstaller::stamp(const QString &format) const
{
    return QLocale::c().toString(m_clock.wallClock(), format);
}

} // namespace tirlo
