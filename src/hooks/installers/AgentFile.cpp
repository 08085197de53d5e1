#include "AgentFile.h"

#include "HookError.h"
#include "core/Paths.h"
#include "platform/FileReplacement.h"
#include "platform/PlainFile.h"
#include "platform/PrivateFolder.h"

#include <QFileInfo>

using namespace Qt::StringLiterals;

namespace tirlo {

namespace {

std::optional<JsonObject> objectIn(const QByteArray &bytes)
{
    const auto node = readJson(bytes);
    return node && node->object() ? std::optional(*node->object()) : std::nullopt;
}

} // namespace

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
    return readPlainFile(m_path);
}

std::optional<JsonObject> AgentFile::readLeniently() const
{
    const auto bytes = read();
    return bytes ? objectIn(*bytes) : std::nullopt;
}

AgentFile::Contents AgentFile::contents() const
{
    if (!exists())
        return {};
    const auto bytes = read();
    if (!bytes)
        throw HookError(m_label + u" cannot be read — Tirlo has not touched it."_s);
    return {*bytes, objectIn(*bytes)};
}

AgentFile::Contents AgentFile::strictReadJSONObject() const
{
    Contents found = contents();
    if (!found.object && exists())
        throw HookError(m_label + u" is not valid JSON — Tirlo has not touched it."_s);
    return found;
}

QString AgentFile::backUp(const QByteArray &bytes, const QString &stamp) const
{
    QString path = m_path + u".bak-"_s + stamp;
    QString reason;
    if (!QFileInfo::exists(path))
        reason = replaceFile(path, bytes, QFileInfo(m_path).permissions());
    else if (readPlainFile(path) == bytes)
        return {};
    else
        reason = u"there is one already"_s;
    if (!reason.isEmpty())
        throw HookError(u"Could not back up "_s + QFileInfo(path).fileName() + u": "_s + reason);
    return path;
}

void AgentFile::write(const QByteArray &bytes) const
{
    if (const QString reason = makeMissingFolders(QFileInfo(m_path).path()); !reason.isEmpty())
        throw HookError(m_label.section(u'/', 0, -2) + u": "_s + reason);
    // What a new file holds is run by the agent, so nobody else may change it.
    const auto mode = exists()
        ? std::nullopt
        : std::optional<QFileDevice::Permissions>(QFileDevice::ReadOwner | QFileDevice::WriteOwner);
    if (const QString reason = replaceFile(m_path, bytes, mode); !reason.isEmpty())
        throw HookError(reason);
}

} // namespace tirlo
