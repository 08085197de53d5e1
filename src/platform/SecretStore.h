#pragma once

#include <QString>

#include <optional>

namespace tirlo {

/// The desktop's keyring: one text per item key, under the program's own service name.
///
/// Every failure is silent: what can't be read is absent, what can't be written is lost. No text
/// of it ever reaches a log or an error.
class SecretStore
{
public:
    virtual ~SecretStore() = default;

    /// The text under the key; nothing when there is none or it is no UTF-8.
    [[nodiscard]] virtual std::optional<QString> load(const QString &key) = 0;

    /// Deletes what stands under the key and adds the value; returns before it is durable.
    virtual void save(const QString &key, const QString &value) = 0;

    /// Deletes what stands under the key.
    virtual void remove(const QString &key) = 0;
};

} // namespace tirlo
