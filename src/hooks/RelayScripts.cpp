#include "RelayScripts.h"

#include "core/Paths.h"
#include "platform/FileReplacement.h"
#include "platform/PrivateFolder.h"

#include <QFile>
#include <QFileInfo>

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

/// True when this very script stands there, with its mode.
bool isInstalled(const QString &path, const QByteArray &script)
{
    constexpr auto userAll = QFileDevice::ReadUser | QFileDevice::WriteUser | QFileDevice::ExeUser;
    const QFileInfo present(path);
    QFile file(path);
    return present.isFile() && (present.permissions() & ~userAll) == executable
        && file.open(QIODevice::ReadOnly) && file.readAll() == script;
}

void install(const QString &path, const QByteArray &script)
{
    // The scripts are ours alone: a link in their place leads to somebody else's file.
    if (QFileInfo(path).isSymLink())
        QFile::remove(path);
    if (isInstalled(path, script))
        return;
    // What can't be written leaves the scripts of the start before.
    static_cast<void>(replaceFile(path, script, executable));
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
    makePrivateFolder(paths.supportFolder());
    install(paths.hookScriptPath(), wrapper());
    install(paths.relayScriptPath(), relay());
}

} // namespace tirlo::RelayScripts
