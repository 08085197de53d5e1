#include "RelayScripts.h"

#include "core/Paths.h"

#include <QDir>
#include <QFile>
#include <QSaveFile>

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

void install(const QString &path, const QByteArray &text)
{
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly))
        return;
    file.setPermissions(executable);
    file.write(text);
    file.commit();
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
    install(paths.hookScriptPath(), wrapper());
    install(paths.relayScriptPath(), relay());
}

} // namespace tirlo::RelayScripts
