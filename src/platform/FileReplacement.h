#pragma once

#include <QByteArrayView>
#include <QFileDevice>
#include <QString>

#include <optional>

namespace tirlo {

/// Puts these bytes in the place of the file's content, at once and down to the disk.
///
/// Whatever happens, a full disk included, the path leads to the old file or to the new one. A new
/// file gets the mode; without one, a present file keeps its own. A link stays, and what it points
/// at is replaced. Returns what hinders it, in the system's words; "" when it is done.
[[nodiscard]] QString replaceFile(const QString &path, QByteArrayView bytes,
                                  std::optional<QFileDevice::Permissions> mode = {});

} // namespace tirlo
