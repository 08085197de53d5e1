#pragma once

#include <QByteArray>

#include <optional>

namespace tirlo {

/// The bytes that were packed with gzip.
///
/// Nothing when they are damaged or end too early, or when there are more than `limit` of them.
[[nodiscard]] std::optional<QByteArray> gunzip(const QByteArray &packed, qsizetype limit);

} // namespace tirlo
