#include "HookInstaller.h"

#include "platform/MainQueue.h"

#include <QLocale>

#include <utility>

namespace tirlo {

HookInstaller::HookInstaller(const AgentFile &file, std::vector<HookGroup> groups,
                             JsonSlashes slashes, const MainQueue &clock)
    : m_file(file)
    , m_groups(std::move(groups))
    , m_slashes(slashes)
    , m_clock(clock)
{
}

bool HookInstaller::hooksInstalled() const
{
    const auto settings = m_file.readLeniently();
    return settings && holdsHooks(*settings);
}

QString HookInstaller::presentText() const
{
    if (const auto settings = m_file.readLeniently())
        return QString::fromUtf8(serialised(*settings));
    return QString::fromUtf8(m_file.read().value_or(QByteArray()));
}

bool HookInstaller::laysOutAnew() const
{
    const auto settings = m_file.readLeniently();
    return settings && m_file.read().value_or(QByteArray()).trimmed() != serialised(*settings);
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
