#pragma once

#include <QString>

namespace tirlo {

/// Makes the folder, and those above it that are missing, and keeps all other users out of it.
///
/// A folder that it makes is never open to them, whatever the umask. What can't be done is left.
void makePrivateFolder(const QString &path);

} // namespace tirlo
