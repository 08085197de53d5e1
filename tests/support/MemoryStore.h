#pragma once

#include "platform/KeyValueStore.h"

#include <QMap>

namespace tirlo {

/// A key-value store in memory that counts its writes.
class MemoryStore final : public KeyValueStore
{
public:
    [[nodiscard]] std::optional<StoredValue> value(const QString &key) const override
    {
        const auto found = values.find(key);
        return found == values.end() ? std::nullopt : std::optional(*found);
    }

    void setValue(const QString &key, const StoredValue &value) override
    {
        values.insert(key, value);
        ++writes;
    }

    QMap<QString, StoredValue> values;
    int writes = 0;
};

} // namespace tirlo
