#pragma once

#include <QString>
#include <QUrl>

namespace tirlo {

/// Where the chat providers are reached.
struct ProviderHosts
{
    QUrl anthropic{QStringLiteral("https://api.anthropic.com")};
    QUrl google{QStringLiteral("https://generativelanguage.googleapis.com")};
    QUrl openai{QStringLiteral("https://api.openai.com")};
};

/// The address of the path, and of its query if there is one, on a provider's host.
[[nodiscard]] inline QUrl onHost(const QUrl &host, QLatin1String path)
{
    return host.resolved(QUrl(path));
}

} // namespace tirlo
