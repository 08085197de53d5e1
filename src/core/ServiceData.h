#pragma once

#include "model/Services.h"

#include <QList>
#include <QProperty>
#include <QString>

#include <optional>

namespace tirlo {

/// What is known of the user's web services; written by the pollers, on the main thread only.
struct ServiceData
{
    QProperty<QList<VercelDeployment>> vercelDeployments;
    QProperty<QList<ResendEmail>> resendEmails;
    QProperty<std::optional<qint64>> resendTotal;
    QProperty<std::optional<GitHubStats>> githubStats;
    QProperty<QList<StripePayment>> stripePayments;
    /// In the currency's smallest unit, as is what the card shows of it.
    QProperty<qint64> stripeBalance{0};
    QProperty<qint64> stripeDisplayBalance{0};
    QProperty<QString> stripeCurrency{QStringLiteral("eur")};
    QProperty<bool> stripeLoaded{false};
    QProperty<std::optional<QString>> stripeError;
    QProperty<QList<CalcomBooking>> calcomBookings;
    QProperty<bool> calcomLoaded{false};
    QProperty<std::optional<QString>> calcomError;
    QProperty<QList<NotionPage>> notionPages;
    QProperty<bool> notionLoaded{false};
    QProperty<std::optional<QString>> notionError;
};

} // namespace tirlo
