#include "RelayScripts.h"

#include "core/Paths.h"
#include "platform/FileReplacement.h"

#include <QDir>
#include <QFile>

// The resources of a static library are only there once asked for, outside any namespace.
static void requireRelayResource()
{
    Q_INIT_RESOURCE(relay);
}

namespace tirlo::RelayScripts {

namespace {

constexpr auto ownerAll = QFileDevice::ReadOwner | QFileDevice::WriteOwner | QFileDevice::ExeOwner;
constexpr auto executable = ownerAll | QFileDevice::ReadGroup | QFileDevice::ExeGroup
    | QFileDevice::ReadOther | QFileDevice::ExeOther;

QByteArray resource(const QString &name)
{
    requireRelayResource();
    QFile file(QStringLiteral(":/relay/") + name);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

} // namespace

QByteArray wrapper()
{
    return resource(QStringLiteral("qv-hook"));
}

QByteArray relay()
{
    return resource(QStringLiteral("qv-hook.py"));
}

void installHookScript(const Paths &paths)
{
    QDir().mkpath(paths.supportFolder());
    QFile::setPermissions(paths.supportFolder(), ownerAll);
    // What can't be written leaves the scripts of the start before.
    static_cast<void>(replaceFile(paths.hookScriptPath(), wrapper(), executable));
    static_cast<void>(replaceFile(paths.relayScriptPath(), relay(), executable));
}

} // namespace tirlo::RelayScripts
