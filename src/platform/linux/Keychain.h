#pragma once

#include "platform/BackgroundWorker.h"
#include "platform/SecretStore.h"

#include <QHash>

#include <memory>
#include <optional>

namespace tirlo {

class Keyring;
class SecretFile;

/// The user's secrets in the desktop's keyring, or in a file of our own where there is none.
///
/// The first load() looks for the keyring and takes into it what the file holds from earlier. All
/// work is done in order on one thread of its own, and what is left of it when this object goes.
class Keychain final : public SecretStore
{
public:
    /// The file at `filePath` is used when no keyring answers within `answerLimit` seconds.
    explicit Keychain(QString filePath, double answerLimit = 1);
    ~Keychain() override;

    /// Waits until the secrets are at hand, which takes as long as the user needs to unlock them.
    [[nodiscard]] std::optional<QString> load(const QString &key) override;
    void save(const QString &key, const QString &value) override;
    void remove(const QString &key) override;

    /// Takes back the question to unlock the keyring; a load() that waits for it goes on.
    void stopAsking();

private:
    struct Asking;

    void open();
    void change(const QString &key, const std::optional<QString> &value);

    const QString m_filePath;
    const double m_answerLimit;
    const std::unique_ptr<Asking> m_asking;

    // Used by the worker alone, which goes first.
    std::unique_ptr<SecretFile> m_file;
    /// From the first failure on all goes to the file, and into the keyring at the next start.
    bool m_hasKeyring = false;
    QHash<QString, QString> m_items;
    BackgroundWorker m_worker{BackgroundWorker::AtEnd::finish};
};

} // namespace tirlo
