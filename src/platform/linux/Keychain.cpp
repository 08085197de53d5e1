#include "Keychain.h"

#include "Keyring.h"
#include "SecretFile.h"

#include <future>
#include <utility>

namespace tirlo {

namespace {

bool put(Keyring &keyring, const QString &key, const std::optional<QString> &value)
{
    return value ? keyring.save(key, *value) : keyring.remove(key);
}

} // namespace

/// Lets another thread end the question to the user.
struct Keychain::Asking
{
    ~Asking() { g_object_unref(cancellable); }

    GCancellable *const cancellable = g_cancellable_new();
};

Keychain::Keychain(QString filePath, double answerLimit)
    : m_filePath(std::move(filePath))
    , m_answerLimit(answerLimit)
    , m_asking(std::make_unique<Asking>())
{
}

Keychain::~Keychain()
{
    stopAsking();
}

std::optional<QString> Keychain::load(const QString &key)
{
    std::promise<std::optional<QString>> promise;
    m_worker.post([&] {
        open();
        const auto found = m_items.constFind(key);
        promise.set_value(found == m_items.cend() ? std::nullopt : std::optional(*found));
    });
    return promise.get_future().get();
}

void Keychain::save(const QString &key, const QString &value)
{
    m_worker.post([=, this] { change(key, value); });
}

void Keychain::remove(const QString &key)
{
    m_worker.post([=, this] { change(key, std::nullopt); });
}

void Keychain::stopAsking()
{
    g_cancellable_cancel(m_asking->cancellable);
}

void Keychain::open()
{
    if (m_file)
        return;
    m_file = std::make_unique<SecretFile>(m_filePath);

    Keyring keyring(m_answerLimit);
    if (keyring.isOpen()) {
        if (auto items = keyring.items(m_asking->cancellable)) {
            m_items = *std::move(items);
            m_hasKeyring = true;
        }
    }

    QStringList taken;
    const SecretFile::Entries kept = m_file->entries();
    for (auto entry = kept.begin(); entry != kept.end(); ++entry) {
        if (*entry)
            m_items.insert(entry.key(), **entry);
        else
            m_items.remove(entry.key());
        m_hasKeyring = m_hasKeyring && put(keyring, entry.key(), *entry);
        if (m_hasKeyring)
            taken.append(entry.key());
    }
    m_file->forget(taken);
}

void Keychain::change(const QString &key, const std::optional<QString> &value)
{
    open();
    if (value)
        m_items.insert(key, *value);
    else
        m_items.remove(key);

    if (m_hasKeyring) {
        // Connected anew each time: a connection that is kept would bring news of all keyrings.
        Keyring keyring(m_answerLimit);
        m_hasKeyring = keyring.isOpen() && put(keyring, key, value);
    }
    if (m_hasKeyring)
        m_file->forget({key});
    else
        m_file->set(key, value);
}

} // namespace tirlo
