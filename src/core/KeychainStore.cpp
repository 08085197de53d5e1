#include "KeychainStore.h"

#include "platform/SecretStore.h"

#include <array>
#include <utility>

namespace tirlo {

namespace {

/// Every item that is read at the start.
constexpr std::array allKeys{
    QLatin1String("anthropic-api-key"), QLatin1String("google-api-key"),
    QLatin1String("openai-api-key"),    QLatin1String("resend-api-key"),
    QLatin1String("resend-from"),       QLatin1String("n8n-url"),
    QLatin1String("n8n-api-key"),       QLatin1String("vercel-token"),
    QLatin1String("github-token"),      QLatin1String("stripe-api-key"),
    QLatin1String("calcom-api-key"),    QLatin1String("notion-api-key"),
};

} // namespace

KeychainStore::KeychainStore(SecretStore &keychain)
    : m_keychain(keychain)
{
}

void KeychainStore::load()
{
    for (const QString key : allKeys) {
        const auto value = m_keychain.load(key);
        const std::scoped_lock lock(m_lock);
        if (value && !m_setEarly.contains(key))
            m_cache.insert(key, *value);
    }
    {
        const std::scoped_lock lock(m_lock);
        m_isLoaded = true;
        m_setEarly.clear();
    }
    Q_EMIT loaded();
}

void KeychainStore::whenLoaded(const QObject *context, std::function<void()> work) const
{
    {
        const std::scoped_lock lock(m_lock);
        if (!m_isLoaded) {
            connect(this, &KeychainStore::loaded, context, std::move(work),
                    Qt::ConnectionType(Qt::AutoConnection | Qt::SingleShotConnection));
            return;
        }
    }
    work();
}

std::optional<QString> KeychainStore::get(const QString &key) const
{
    const std::scoped_lock lock(m_lock);
    const auto found = m_cache.constFind(key);
    return found == m_cache.cend() ? std::nullopt : std::optional(*found);
}

void KeychainStore::set(const QString &key, const QString &value)
{
    // The keyring is never called under the lock: it may take its time.
    {
        const std::scoped_lock lock(m_lock);
        const bool mayStand = m_cache.contains(key) || !m_isLoaded;
        if (!m_isLoaded)
            m_setEarly.insert(key);
        if (value.isEmpty() && !mayStand)
            return;
        if (value.isEmpty())
            m_cache.remove(key);
        else
            m_cache.insert(key, value);
    }
    if (value.isEmpty())
        m_keychain.remove(key);
    else
        m_keychain.save(key, value);
}

} // namespace tirlo
