#pragma once

#include <QHash>
#include <QObject>
#include <QSet>
#include <QString>

#include <functional>
#include <mutex>
#include <optional>

namespace tirlo {

class SecretStore;

/// The keys of the user's services, read from memory: the keyring is asked once, by load().
///
/// Any of its functions may be called from any thread.
class KeychainStore final : public QObject
{
    Q_OBJECT

public:
    explicit KeychainStore(SecretStore &keychain);

    /// Reads every known item from the keyring; what was set in the meantime stands. As slow as the
    /// keyring.
    void load();

    /// Calls `work` at once when the items are loaded, and else on the context's thread when they
    /// are; never after the context has gone.
    void whenLoaded(const QObject *context, std::function<void()> work) const;

    /// The item's text; nothing when it was never set, an empty one when that is what is stored.
    [[nodiscard]] std::optional<QString> get(const QString &key) const;

    /// Sets the item, here first and then in the keyring; an empty value removes it from both.
    void set(const QString &key, const QString &value);

Q_SIGNALS:
    /// The items have been read.
    void loaded();

private:
    SecretStore &m_keychain;
    mutable std::mutex m_lock;
    QHash<QString, QString> m_cache;
    /// Items that were set before they were read.
    QSet<QString> m_setEarly;
    bool m_isLoaded = false;
};

} // namespace tirlo
