#pragma once

namespace tirlo {

class Applications;

/// Which terminal an agent without a window of its own is to be looked for in.
namespace TerminalRule {

/// Brings the most preferred of the running terminals to the front; false when none runs.
bool activate(Applications &applications);

/// The same, but starts the desktop's terminal when none runs.
void open(Applications &applications);

} // namespace TerminalRule

} // namespace tirlo
