#include "AgentFile.h"

#include "HookError.h"
#include "core/Paths.h"
#include "platform/FileReplacement.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

using namespace Qt::StringLiterals;

namespace tirlo {

AgentFile::AgentFile(const Paths &paths, const QString &path)
    : m_path(path)
    , m_label(u'~' + path.mid(paths.home().size()))
{
}

bool AgentFile::exists() const
{
    return QFileInfo::exists(m_path);
}

std::optional<QByteArray> AgentFile::read() const
{
    QFile file(m_path);
    // Anything but a plain file, a pipe say, may keep its reader waiting.
    if (!QFileInfo(m_path).isFile() || !file.open(QIODevice::ReadOnly))
        return std::nullopt;
    const QByteArray bytes = file.readAll();
    return file.error() == QFileDevice::NoError ? std::optional(bytes) : std::nullopt;
}

std::optional<JsonObject> AgentFile::readLeniently() const
{
    const auto bytes = read();
    const auto node = bytes ? readJson(*bytes) : std::nullopt;
    return node && node->object() ? std::optional(*node->object()) : std::nullopt;
}

JsonObject AgentFile::strictReadJSONObject(QByteArray &bytes) const
{
    bytes.clear();
    if (!exists())
        return {};
    const auto present = read();
    if (!present)
        throw HookError(m_label + u" cannot be read — Tirlo has not touched it."_s);
    const auto node = readJson(*present);
    if (!node || !node->object())
        throw HookError(m_label + u" is not valid JSON — Tirlo has not touched it."_s);
    bytes = *present;
    return *node->object();
}

void AgentFile::backUp(const QString &stamp) const
{
    const QFileInfo present(m_path);
    const QString name = present.fileName() + u".bak-"_s + stamp;
    const QString path = present.dir().filePath(name);
    const auto bytes = read();
    QString reason;
    if (!bytes)
        reason = u"the file cannot be read"_s;
    else if (QFileInfo::exists(path))
        reason = u"there is one already"_s;
    else
        reason = replaceFile(path, *bytes, present.permissions());
    if (!reason.isEmpty())
        throw HookError(u"Could not back up "_s + name + u": "_s + reason);
}

void AgentFile::write(const QByteArray &bytes) const
{
    QDir().mkpath(QFileInfo(m_path).path());
    if (const QString reason = replaceFile(m_path, bytes); !reason.isEmpty())
        throw HookError(reason);
}

} // namespace tirlo
