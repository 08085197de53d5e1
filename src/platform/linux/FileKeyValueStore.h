#pragma once

#include "platform/BackgroundWorker.h"
#include "platform/KeyValueStore.h"

#include <QJsonObject>

#include <mutex>
#include <optional>

namespace tirlo {

class MainQueue;

/// Settings in one JSON file, mode 0600, replaced atomically on each change.
///
/// It is written in the background, so that a slow disk holds nobody up: what changes meanwhile is
/// written next, at once, and the last values also when the store goes.
///
/// Bytes stand in the file as an object with one member "base64". A file that does not parse is set
/// aside as `<name>.corrupt-<time>`; where even that fails, and where the file can't be read, it is
/// left alone and changes hold for this run only.
class FileKeyValueStore final : public KeyValueStore
{
public:
    /// Reads the file at `path`; a missing one counts as empty.
    FileKeyValueStore(QString path, const MainQueue &clock);

    [[nodiscard]] std::optional<StoredValue> value(const QString &key) const override;
    void setValue(const QString &key, const StoredValue &value) override;

    /// Waits until the present values are written.
    void flush() { m_writing.wait(); }

private:
    void load(const MainQueue &clock);
    void save();
    void write();

    QString m_path;
    QJsonObject m_values;
    bool m_mayWrite = true;

    std::mutex m_lock;
    /// What is to be written next; guarded by the lock.
    std::optional<QJsonObject> m_next;
    BackgroundWorker m_writing{BackgroundWorker::AtEnd::finish};
};

} // namespace tirlo
