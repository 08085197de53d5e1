#pragma once

#include <QDateTime>
#include <QString>

#include <optional>

/// What the answers of several services have in common.
namespace tirlo {

struct HttpReply;

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
