#include "KeychainStore.h"

#include "platform/SecretStore.h"

#include <array>

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
    for (const QString key : allKeys) {
        if (const auto value = m_keychain.load(key))
            m_cache.insert(key, *value);
    }
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
    if (value.isEmpty()) {
        {
            const std::scoped_lock lock(m_lock);
            if (!m_cache.remove(key))
                return;
        }
        m_keychain.remove(key);
        return;
    }
    {
        const std::scoped_lock lock(m_lock);
        m_cache.insert(key, value);
    }
    m_keychain.save(key, value);
}

} // namespace tirlo
