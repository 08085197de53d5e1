#pragma once

#include "platform/KeyValueStore.h"

#include <QJsonObject>

namespace tirlo {

class MainQueue;

/// Settings in one JSON file, mode 0600, replaced atomically on each change.
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

private:
    void load(const MainQueue &clock);
    void save() const;

    QString m_path;
    QJsonObject m_values;
    bool m_mayWrite = true;
};

} // namespace tirlo
