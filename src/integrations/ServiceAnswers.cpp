#include "ServiceAnswers.h"

#include "platform/HttpClient.h"

#include <QRegularExpression>
#include <QTimeZone>

#include <algorithm>
#include <limits>

namespace tirlo {

namespace {

constexpr double longestSeconds = 9e12;
constexpr int largestOffsetHours = 14;

} // namespace

std::optional<QDateTime> isoDate(const QString &text)
{
    static const QRegularExpression form(
        QStringLiteral("\\A(\\d{4}-\\d\\d-\\d\\d)T(\\d\\d:\\d\\d):(\\d\\d)(?:\\.(\\d+))?"
                       "(?:Z|([+-])(\\d\\d):?(\\d\\d))\\z"));
    const auto match = form.match(text);
    if (!match.hasMatch())
        return std::nullopt;

    const QDate date = QDate::fromString(match.captured(1), Qt::ISODate);
    const QTime minute = QTime::fromString(match.captured(2), QStringLiteral("HH:mm"));
    // A leap second is the first one of the next minute.
    const int second = match.captured(3).toInt();
    const int offsetHours = match.captured(6).toInt();
    const int offsetMinutes = match.captured(7).toInt();
    if (!date.isValid() || !minute.isValid() || second > 60 || offsetHours > largestOffsetHours
        || offsetMinutes > 59) {
        return std::nullopt;
    }

    const int milliseconds = match.captured(4).leftJustified(3, QLatin1Char('0')).first(3).toInt();
    const int sign = match.captured(5) == QLatin1String("-") ? -1 : 1;
    const int offset = sign * (offsetHours * 60 + offsetMinutes) * 60;
    return QDateTime(date, minute, Qt::UTC)
        .addMSecs((second - offset) * 1000 + milliseconds)
        .toLocalTime();
}

QDateTime dateSinceEpoch(double seconds)
{
    const double bounded = std::clamp(seconds, -longestSeconds, longestSeconds);
    return QDateTime::fromMSecsSinceEpoch(qRound64(bounded * 1000));
}

qint64 boundedSum(qint64 first, qint64 second)
{
    using Limits = std::numeric_limits<qint64>;
    qint64 sum = 0;
    if (!__builtin_add_overflow(first, second, &sum))
        return sum;
    return first < 0 ? Limits::min() : Limits::max();
}

QString failureText(const HttpReply &reply)
{
    if (reply.status == 401)
        return QStringLiteral("Invalid API key (401)");
    if (reply.status != 0 && reply.status != 200)
        return QStringLiteral("API error %1").arg(reply.status);
    return reply.error.isEmpty() ? QStringLiteral("No connection") : reply.error;
}

} // namespace tirlo
