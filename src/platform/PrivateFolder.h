#pragma once

#include <QString>

namespace tirlo {

/// Makes the folder and those above it that are missing, each open to its owner alone whatever the
/// umask. Returns what hinders it, in the system's words; "" when the folder is there.
[[nodiscard]] QString makeMissingFolders(const QString &path);

/// Makes the folder like that, and keeps all other users out of it also where it was there before.
///
/// What can't be done is left.
void makePrivateFolder(const QString &path);

} // namespace tirlo
