#pragma once

#include <QByteArray>
#include <QString>

#include <cstdint>
#include <optional>
#include <variant>

namespace tirlo {

/// What one key of the store may hold. A boolean is no number.
using StoredValue = std::variant<bool, std::int64_t, double, QString, QByteArray>;

/// The user's settings by key: typed values, written at once on each change.
class KeyValueStore
{
public:
    virtual ~KeyValueStore() = default;

    /// The value under the key, or nothing when the key is absent.
    [[nodiscard]] virtual std::optional<StoredValue> value(const QString &key) const = 0;

    /// Stores the value and makes it durable; setting the value that is there does nothing.
    virtual void setValue(const QString &key, const StoredValue &value) = 0;

    /// The typed readings: nothing when the key is absent or holds another type.
    [[nodiscard]] std::optional<bool> boolean(const QString &key) const;
    /// Any number, whole or not.
    [[nodiscard]] std::optional<double> real(const QString &key) const;
    /// A number without a fraction.
    [[nodiscard]] std::optional<std::int64_t> integer(const QString &key) const;
    [[nodiscard]] std::optional<QString> text(const QString &key) const;
    [[nodiscard]] std::optional<QByteArray> bytes(const QString &key) const;
};

} // namespace tirlo
