#include "GuardedHooks.h"

#include "HookError.h"

#include <QCryptographicHash>

#include <utility>

using namespace Qt::StringLiterals;

namespace tirlo {

namespace {

QByteArray fingerprintOf(const QByteArray &bytes)
{
    return QCryptographicHash::hash(bytes, QCryptographicHash::Sha256).toHex();
}

} // namespace

GuardedHooks::GuardedHooks(QString name, const AgentFile &file, std::vector<HookGroup> groups,
                           const MainQueue &clock)
    : HookInstaller(file, std::move(groups), JsonSlashes::plain, clock)
    , m_name(std::move(name))
{
}

QString GuardedHooks::previewHooks(bool install)
{
    // What can't be previewed leaves nothing of an earlier preview to confirm.
    m_pending.reset();
    if (!install && !file().exists())
        throw HookError(u"No %1 hooks to remove."_s.arg(m_name), HookError::Domain::tirloNoop);
    QByteArray present;
    const JsonObject settings = file().strictReadJSONObject(present);
    const QByteArray data = serialised(install ? withHooks(settings) : withoutHooks(settings));
    m_pending = Pending{data, fingerprintOf(present)};
    return QString::fromUtf8(data);
}

void GuardedHooks::writeHooks()
{
    if (!m_pending)
        return;
    if (fingerprintOf(file().read().value_or(QByteArray())) != m_pending->fingerprint)
        throw HookError(file().label() + u" changed since preview. Refresh and try again."_s);
    if (file().exists())
        file().backUp(stamp(u"yyyyMMdd-HHmmss"_s));
    file().write(m_pending->data);
    m_pending.reset();
}

} // namespace tirlo
