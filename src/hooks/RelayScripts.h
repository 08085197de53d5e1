#pragma once

#include <QByteArray>

namespace tirlo {

class Paths;

/// The scripts that agents run at a hook, and that pass it on to the socket.
namespace RelayScripts {

/// The shell wrapper's text; agents' settings point at it.
[[nodiscard]] QByteArray wrapper();
/// The text of the relay proper, which the wrapper runs.
[[nodiscard]] QByteArray relay();

/// Writes both scripts to the support folder, mode 0700, as executables; failures are ignored.
///
/// Present ones are replaced, so that an update of the program reaches every installed hook.
void installHookScript(const Paths &paths);

} // namespace RelayScripts

} // namespace tirlo
