#pragma once

#include <QString>
#include <QUrl>

#include <optional>

namespace tirlo {

/// The web address that a text holds, white space around it aside; nothing for any other text.
///
/// The one way by which a link that was not written here reaches the browser: it must be http or
/// https and name a host, so that a file or a script is never opened.
[[nodiscard]] std::optional<QUrl> safeWebURL(const std::optional<QString> &text);

} // namespace tirlo
