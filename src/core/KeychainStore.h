#pragma once

#include <QHash>
#include <QString>

#include <mutex>
#include <optional>

namespace tirlo {

class SecretStore;

/// The keys of the user's services, read from memory: the keyring is asked at the start alone.
///
/// get() may be called from any thread, and so may set().
class KeychainStore
{
public:
    /// Reads every known item from the keyring, in order.
    explicit KeychainStore(SecretStore &keychain);

    /// The item's text; nothing when it was never set, an empty one when that is what is stored.
    [[nodiscard]] std::optional<QString> get(const QString &key) const;

    /// Sets the item, here first and then in the keyring; an empty value removes it from both.
    void set(const QString &key, const QString &value);

private:
    SecretStore &m_keychain;
    mutable std::mutex m_lock;
    QHash<QString, QString> m_cache;
};

} // namespace tirlo
