#include "SecretFile.h"

#include "platform/FileReplacement.h"
#include "platform/PrivateFolder.h"

#include <QFile>
#include <QFileInfo>
#include <QJsonDocument>
#include <QJsonObject>

#include <utility>

namespace tirlo {

namespace {

constexpr QFileDevice::Permissions ownerOnly = QFileDevice::ReadOwner | QFileDevice::WriteOwner;
/// Bytes of the longest file that is read.
constexpr qint64 longestFile = 1024 * 1024;

} // namespace

SecretFile::SecretFile(QString path)
    : m_path(std::move(path))
{
    load();
}

void SecretFile::set(const QString &key, const std::optional<QString> &value)
{
    m_entries.insert(key, value);
    save();
}

void SecretFile::forget(const QStringList &keys)
{
    if (m_entries.removeIf([&](auto entry) { return keys.contains(entry.key()); }) > 0)
        save();
}

void SecretFile::load()
{
    QFile file(m_path);
    if (!file.exists())
        return;

    // What can't be read may be whole all the same. A pipe would keep its reader waiting.
    m_mayWrite = QFileInfo(m_path).isFile() && file.open(QIODevice::ReadOnly);
    if (!m_mayWrite)
        return;
    // Also for the file that is set aside; somebody may have opened it to others.
    file.setPermissions(ownerOnly);
    const QByteArray bytes = file.read(longestFile + 1);
    m_mayWrite = file.error() == QFileDevice::NoError;
    if (!m_mayWrite)
        return;
    // Nor is one of this size ours to throw away.
    m_mayWrite = bytes.size() <= longestFile;
    if (!m_mayWrite)
        return;
    const QJsonDocument document = QJsonDocument::fromJson(bytes);
    if (!document.isObject()) {
        file.close();
        const QString aside = m_path + QStringLiteral(".corrupt");
        QFile::remove(aside);
        m_mayWrite = QFile::rename(m_path, aside);
        return;
    }
    const QJsonObject entries = document.object();
    for (auto entry = entries.begin(); entry != entries.end(); ++entry) {
        if (entry->isString())
            m_entries.insert(entry.key(), entry->toString());
        else if (entry->isNull())
            m_entries.insert(entry.key(), std::nullopt);
    }
}

void SecretFile::save() const
{
    if (!m_mayWrite)
        return;
    if (m_entries.isEmpty()) {
        QFile::remove(m_path);
        return;
    }
    QJsonObject entries;
    for (auto entry = m_entries.begin(); entry != m_entries.end(); ++entry)
        entries.insert(entry.key(), *entry ? QJsonValue(**entry) : QJsonValue());

    makePrivateFolder(QFileInfo(m_path).path());
    // What can't be written is lost at the end of this run.
    static_cast<void>(replaceFile(m_path, QJsonDocument(entries).toJson(), ownerOnly));
}

} // namespace tirlo
