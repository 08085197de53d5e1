#include "ServiceAnswers.h"

#include "platform/HttpClient.h"

#include <QRegularExpression>

#include <algorithm>
#include <limits>

namespace tirlo {

namespace {

constexpr double longestSeconds = 9e12;

} // namespace

QJsonObject answeredObject(const QByteArray &body)
{
    return Json::parsedObject(body).value_or(QJsonObject());
}

std::optional<QDateTime> isoDate(const QString &text)
{
    // Qt would also take a date alone, a local time and midnight as the hour 24, but no fraction of
    // many digits.
    static const QRegularExpression form(
        QStringLiteral("\\A(\\d{4}-\\d\\d-\\d\\dT(?!24)\\d\\d:\\d\\d:\\d\\d(?:\\.\\d{1,3})?)\\d*"
                       "(Z|[+-](?:0\\d|1[0-4]):?[0-5]\\d)\\z"));
    const auto match = form.match(text);
    const QDateTime date
        = QDateTime::fromString(match.captured(1) + match.captured(2), Qt::ISODateWithMs);
    return date.isValid() ? std::optional(date.toLocalTime()) : std::nullopt;
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
