#include "TerminalRule.h"

#include "platform/Applications.h"

#include <algorithm>
#include <array>

namespace tirlo::TerminalRule {

namespace {

constexpr QLatin1String desktopTerminal("com.apple.Terminal");

/// The most preferred first.
constexpr std::array terminals{desktopTerminal, QLatin1String("com.googlecode.iterm2"),
                               QLatin1String("net.kovidgoyal.kitty"),
                               QLatin1String("com.mitchellh.ghostty")};

} // namespace

bool activate(Applications &applications)
{
    const auto running = applications.running();
    for (const QLatin1String terminal : terminals) {
        const auto found
            = std::ranges::find(running, terminal, &RunningApplication::bundleIdentifier);
        if (found == running.end())
            continue;
        applications.activate(*found);
        return true;
    }
    return false;
}

void open(Applications &applications)
{
    if (!activate(applications))
        applications.open(desktopTerminal);
}

} // namespace tirlo::TerminalRule
