#pragma once

#include <QString>

namespace tirlo {

/// Where the services answer: scheme and host, without a slash at the end.
///
/// The user's own n8n instance stands among the keys.
struct ServiceHosts
{
    QString vercel = QStringLiteral("https://api.vercel.com");
    QString stripe = QStringLiteral("https://api.stripe.com");
    QString github = QStringLiteral("https://api.github.com");
    QString resend = QStringLiteral("https://api.resend.com");
    QString notion = QStringLiteral("https://api.notion.com");
    QString calcom = QStringLiteral("https://api.cal.com");
};

} // namespace tirlo
