#include "CalcomPoller.h"

#include "core/AppState.h"
#include "core/ServiceData.h"

namespace tirlo {

namespace {

constexpr int shownDays = 60;

/// The date under the first of two keys that holds a readable one.
std::optional<QDateTime> firstDate(const QJsonObject &object, QLatin1String key,
                                   QLatin1String otherKey)
{
    for (const QLatin1String each : {key, otherKey}) {
        if (auto date = isoDate(Json::text(object, each).value_or(QString())))
            return date;
    }
    return std::nullopt;
}

std::optional<QString> parseNotes(const QJsonObject &booking)
{
    const QJsonObject responses = booking.value(QLatin1String("responses")).toObject();
    const QJsonObject notes = responses.value(QLatin1String("notes")).toObject();
    for (const auto &text : {Json::text(notes, QLatin1String("value")),
                             Json::text(booking, QLatin1String("description"))}) {
        if (text && !text->isEmpty())
            return text;
    }
    return std::nullopt;
}

std::optional<CalcomBooking> parseBooking(const QJsonObject &object)
{
    const auto id = Json::integer(object, QLatin1String("id"));
    const auto start = firstDate(object, QLatin1String("start"), QLatin1String("startTime"));
    if (!id || !start)
        return std::nullopt;

    const auto end = firstDate(object, QLatin1String("end"), QLatin1String("endTime"));
    const QJsonObject attendee
        = object.value(QLatin1String("attendees")).toArray().first().toObject();
    return CalcomBooking{
        .id = *id,
        .title = Json::text(object, QLatin1String("title")).value_or(QStringLiteral("Meeting")),
        .startTime = *start,
        .endTime = end.value_or(*start),
        .status = Json::text(object, QLatin1String("status")).value_or(QStringLiteral("accepted")),
        .attendeeName = Json::text(attendee, QLatin1String("name")),
        .attendeeEmail = Json::text(attendee, QLatin1String("email")),
        .attendeeNotes = parseNotes(object),
    };
}

std::optional<QList<CalcomBooking>> parseBookings(const QByteArray &body)
{
    return parsedList(answeredObject(body), QLatin1String("data"), parseBooking);
}

} // namespace

CalcomPoller::CalcomPoller(const PollerContext &context)
    : Poller(context, {.firstAfterStart = 8, .interval = 300})
{
}

void CalcomPoller::runCycle()
{
    const auto key = this->key(QLatin1String("calcom-api-key"));
    if (!key)
        return;

    const QDate today = m_context.queue.wallClock().date();
    const auto startOf
        = [](const QDate &day) { return day.startOfDay().toUTC().toString(Qt::ISODate); };
    const HttpRequest request{
        .url = QUrl(m_context.hosts.calcom
                    + QStringLiteral("/v2/bookings?status=upcoming&start=%1&end=%2")
                          .arg(startOf(today), startOf(today.addDays(shownDays)))),
        .headers
        = {{"Authorization", "Bearer " + key->toUtf8()}, {"cal-api-version", "2024-08-13"}},
    };
    AppState &state = m_context.state;
    fetchList(request, parseBookings, state.services().calcomBookings,
              state.services().calcomLoaded, state.services().calcomError);
}

} // namespace tirlo
