#pragma once

#include <QByteArray>
#include <QString>

#include <optional>

namespace tirlo {

/// Bytes of the longest settings file that is read.
inline constexpr qint64 longestPlainFile = 64 * 1024 * 1024;

/// All bytes of a plain file. None for what can't be read, for a longer one, and for anything but a
/// plain file: a pipe, say, would keep its reader waiting.
[[nodiscard]] std::optional<QByteArray> readPlainFile(const QString &path);

} // namespace tirlo
