#pragma once

#include <QJsonObject>
#include <QString>

namespace tirlo {

/// A tool's arguments as "key: value" lines, sorted by key, with hidden marks made visible.
///
/// Objects and lists are compact JSON. The lines of a longer text are set in below its key, so that
/// no text can pass for another argument.
[[nodiscard]] QString argumentLines(const QJsonObject &arguments);

} // namespace tirlo
