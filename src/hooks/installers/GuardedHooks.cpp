#include "GuardedHooks.h"

#include "HookError.h"

using namespace Qt::StringLiterals;

namespace tirlo {

GuardedHooks::GuardedHooks(const Paths &paths, const HookTable &table, const MainQueue &clock)
    : HookInstaller(paths, table, JsonSlashes::plain, clock)
{
}

HookChange GuardedHooks::previewHooks(bool install)
{
    // What can't be previewed leaves nothing of an earlier preview to confirm.
    cancel();
    if (!install && !file().exists())
        throw HookError(u"No %1 hooks to remove."_s.arg(agent().name),
                        HookError::Domain::tirloNoop);
    const AgentFile::Contents present = file().strictReadJSONObject();
    const JsonObject settings = present.object.value_or(JsonObject());
    return keepPending(present, install ? withHooks(settings) : withoutHooks(settings));
}

QString GuardedHooks::backUp(const QByteArray &previewed) const
{
    if (fingerprintOf(file().read().value_or(QByteArray())) != previewed)
        throw HookError(file().label() + u" changed since preview. Refresh and try again."_s);
    if (!file().exists())
        return {};
    return file().backUp(file().contents().bytes, stamp(u"yyyyMMdd-HHmmss"_s));
}

} // namespace tirlo
