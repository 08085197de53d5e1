#pragma once

#include "core/Json.h"

#include <QDateTime>
#include <QList>
#include <QString>

#include <optional>
#include <type_traits>

/// What the answers of several services have in common.
namespace tirlo {

struct HttpReply;

/// What `parse` makes of the objects of the array; those of which it makes nothing are left out.
///
/// Nothing if there is no array of objects under the key.
template<typename Parse>
[[nodiscard]] auto parsedList(const QJsonObject &answer, QLatin1String key, Parse parse)
{
    using Item = typename std::invoke_result_t<Parse, const QJsonObject &>::value_type;
    std::optional<QList<Item>> list;
    if (const auto objects = Json::objects(answer, key)) {
        list.emplace();
        for (const QJsonObject &object : *objects) {
            if (const auto item = parse(object))
                list->append(*item);
        }
    }
    return list;
}

/// The object that the body is; an empty one if it is none.
[[nodiscard]] QJsonObject answeredObject(const QByteArray &body);

/// The date that an internet date-time tells, such as "2026-03-14T09:26:53.589+01:00".
///
/// Fractions of the second may be missing, the offset may not; digits below a millisecond don't
/// count. Nothing for any other text.
[[nodiscard]] std::optional<QDateTime> isoDate(const QString &text);

/// The date so many seconds after the start of 1970, kept within some 285,000 years of it.
[[nodiscard]] QDateTime dateSinceEpoch(double seconds);

/// The sum, or the nearest number where it is none of 64 bits.
[[nodiscard]] qint64 boundedSum(qint64 first, qint64 second);

/// What a card says of a request without a whole answer of status 200.
[[nodiscard]] QString failureText(const HttpReply &reply);

} // namespace tirlo
