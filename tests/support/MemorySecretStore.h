#pragma once

#include "platform/SecretStore.h"

#include <QMap>
#include <QStringList>

namespace tirlo {

/// A keyring in memory that notes what was asked of it, such as "save vercel-token".
class MemorySecretStore final : public SecretStore
{
public:
    [[nodiscard]] std::optional<QString> load(const QString &key) override
    {
        calls.append(QStringLiteral("load ") + key);
        const auto found = items.constFind(key);
        return found == items.cend() ? std::nullopt : std::optional(*found);
    }

    void save(const QString &key, const QString &value) override
    {
        calls.append(QStringLiteral("save ") + key);
        items.insert(key, value);
    }

    void remove(const QString &key) override
    {
        calls.append(QStringLiteral("remove ") + key);
        items.remove(key);
    }

    QMap<QString, QString> items;
    QStringList calls;
};

} // namespace tirlo
