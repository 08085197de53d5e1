#pragma once

#include <QDateTime>
#include <QString>
#include <QStringList>

#include <optional>

namespace tirlo {

/// One deployment of the user's Vercel projects.
struct VercelDeployment
{
    QString id;
    QString projectName;
    QString url;
    /// As the service spells it, such as "READY".
    QString state;
    QDateTime createdAt;
    std::optional<QString> commitMessage;
    std::optional<QString> branch;

    bool operator==(const VercelDeployment &) const = default;
};

/// One mail sent through the user's Resend account.
struct ResendEmail
{
    QString id;
    QStringList to;
    QString subject;
    QDateTime createdAt;
    QString lastEvent;

    bool operator==(const ResendEmail &) const = default;
};

/// What the user's GitHub repositories add up to.
struct GitHubStats
{
    qint64 totalRepos = 0;
    qint64 totalStars = 0;

    bool operator==(const GitHubStats &) const = default;
};

/// One charge of the user's Stripe account.
struct StripePayment
{
    QString id;
    /// In the currency's smallest unit.
    qint64 amount = 0;
    QString currency;
    std::optional<QString> description;
    QDateTime createdAt;
    QString status;

    bool operator==(const StripePayment &) const = default;
};

/// One booking of the user's Cal.com calendar.
struct CalcomBooking
{
    qint64 id = 0;
    QString title;
    QDateTime startTime;
    QDateTime endTime;
    QString status;
    std::optional<QString> attendeeName;
    std::optional<QString> attendeeEmail;
    std::optional<QString> attendeeNotes;

    bool operator==(const CalcomBooking &) const = default;
};

/// One page or database of the user's Notion workspace.
struct NotionPage
{
    QString id;
    QString title;
    std::optional<QString> emoji;
    QDateTime lastEditedAt;
    QString url;

    bool operator==(const NotionPage &) const = default;
};

} // namespace tirlo
