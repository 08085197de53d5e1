#pragma once

#include <QString>

#include <optional>

class QUrl;

namespace tirlo {

/// The desktop's entry for an installed application, by its id without the ending ".desktop".
namespace DesktopEntry {

/// The name that the entry shows in the user's language; nothing without a usable entry.
[[nodiscard]] std::optional<QString> name(const QString &id);

/// Starts the application; false when there is no usable entry or its program doesn't start.
///
/// The program is on its own from the first moment: it inherits no descriptor, no blocked or
/// ignored signal and no terminal of ours.
bool launch(const QString &id);

/// Opens the address in the application that the user has chosen for its scheme, started likewise.
bool launchHandlerOf(const QUrl &url);

} // namespace DesktopEntry

} // namespace tirlo
