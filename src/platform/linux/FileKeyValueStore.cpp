#include "FileKeyValueStore.h"

#include "platform/FileReplacement.h"
#include "platform/MainQueue.h"
#include "platform/PlainFile.h"
#include "platform/PrivateFolder.h"

#include <QFile>
#include <QFileInfo>
#include <QJsonDocument>

#include <utility>

namespace tirlo {

namespace {

const QString bytesMember = QStringLiteral("base64");

QJsonValue toJson(const StoredValue &value)
{
    if (const auto *bytes = std::get_if<QByteArray>(&value))
        return QJsonObject{{bytesMember, QString::fromLatin1(bytes->toBase64())}};
    if (const auto *text = std::get_if<QString>(&value))
        return *text;
    if (const auto *flag = std::get_if<bool>(&value))
        return *flag;
    if (const auto *whole = std::get_if<std::int64_t>(&value))
        return qint64(*whole);
    return std::get<double>(value);
}

std::optional<StoredValue> fromJson(const QJsonValue &json)
{
    if (json.isBool())
        return StoredValue(json.toBool());
    if (json.isString())
        return StoredValue(json.toString());
    if (json.isDouble()) {
        const QVariant number = json.toVariant();
        if (number.metaType().id() == QMetaType::LongLong)
            return StoredValue(std::int64_t(number.toLongLong()));
        return StoredValue(json.toDouble());
    }
    if (!json.isObject() || !json[bytesMember].isString())
        return std::nullopt;
    const auto decoded = QByteArray::fromBase64Encoding(json[bytesMember].toString().toLatin1(),
                                                        QByteArray::AbortOnBase64DecodingErrors);
    return decoded ? std::optional<StoredValue>(decoded.decoded) : std::nullopt;
}

} // namespace

FileKeyValueStore::FileKeyValueStore(QString path, const MainQueue &clock)
    : m_path(std::move(path))
{
    load(clock);
}

std::optional<StoredValue> FileKeyValueStore::value(const QString &key) const
{
    return fromJson(m_values.value(key));
}

void FileKeyValueStore::setValue(const QString &key, const StoredValue &value)
{
    const QJsonValue json = toJson(value);
    if (m_values.value(key) == json)
        return;
    m_values.insert(key, json);
    save();
}

void FileKeyValueStore::load(const MainQueue &clock)
{
    if (!QFile::exists(m_path))
        return;

    // What can't be read may be whole all the same.
    const auto bytes = readPlainFile(m_path);
    m_mayWrite = bytes.has_value();
    if (!bytes)
        return;
    const QJsonDocument document = QJsonDocument::fromJson(*bytes);
    if (document.isObject()) {
        m_values = document.object();
        return;
    }
    const QString stamp = clock.wallClock().toString(QStringLiteral("yyyyMMdd-HHmmss"));
    m_mayWrite = QFile::rename(m_path, m_path + QStringLiteral(".corrupt-") + stamp);
}

void FileKeyValueStore::save()
{
    if (!m_mayWrite)
        return;
    {
        const std::lock_guard guard(m_lock);
        if (std::exchange(m_next, m_values))
            return;
    }
    m_writing.post([this] { write(); });
}

void FileKeyValueStore::write()
{
    std::optional<QJsonObject> values;
    {
        const std::lock_guard guard(m_lock);
        values.swap(m_next);
    }
    makePrivateFolder(QFileInfo(m_path).path());
    // What can't be written now is written along with the next change.
    static_cast<void>(replaceFile(m_path, QJsonDocument(*values).toJson(),
                                  QFileDevice::ReadOwner | QFileDevice::WriteOwner));
}

} // namespace tirlo
