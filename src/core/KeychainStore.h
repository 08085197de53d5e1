#pragma once

#include <QHash>
#include <QSet>
#include <QString>

#include <mutex>
#include <optional>

namespace tirlo {

class SecretStore;

/// When a KeychainStore reads its items.
enum class KeychainLoading { atOnce, later };

/// The keys of the user's services, read from memory: the keyring is asked at the start alone.
///
/// Any of its functions may be called from any thread.
class KeychainStore
{
public:
    /// Reads every known item from the keyring, in order; `later` leaves that to load().
    explicit KeychainStore(SecretStore &keychain,
                           KeychainLoading loading = KeychainLoading::atOnce);

    /// Reads the known items; what was set in the meantime stands. Once, and as slow as the keyring.
    void load();

    /// The item's text; nothing when it was never set, an empty one when that is what is stored.
    [[nodiscard]] std::optional<QString> get(const QString &key) const;

    /// Sets the item, here first and then in the keyring; an empty value removes it from both.
    void set(const QString &key, const QString &value);

private:
    SecretStore &m_keychain;
    mutable std::mutex m_lock;
    QHash<QString, QString> m_cache;
    /// Items that were set before they were read.
    QSet<QString> m_setEarly;
    bool m_isLoaded = false;
};

} // namespace tirlo
