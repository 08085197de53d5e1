#include "ApplicationNames.h"

#include <algorithm>
#include <vector>

namespace tirlo {

namespace {

const std::vector<ApplicationNames> &allNames()
{
    static const std::vector<ApplicationNames> table{
        {"com.microsoft.VSCode", {"code"}, {"code", "code_code", "com.visualstudio.code"}},
        {"com.todesktop.230313mzl4w4u92", {"cursor"}, {"cursor", "com.cursor.Cursor"}},
        {"com.openai.codex", {"codex"}, {"codex", "com.openai.codex"}},

        // The terminal that a desktop brings along, whichever that is.
        {"com.apple.Terminal", {"gnome-terminal"}, {"org.gnome.Terminal"}},
        {"com.apple.Terminal", {"konsole", "org.kde.konsole"}, {"org.kde.konsole"}},
        {"com.apple.Terminal", {"xfce4-terminal"}, {"xfce4-terminal"}},
        {"com.apple.Terminal", {"org.gnome.console", "kgx"}, {"org.gnome.Console"}},
        {"com.apple.Terminal", {"org.gnome.ptyxis"}, {"org.gnome.Ptyxis"}},
        {"com.apple.Terminal", {"mate-terminal"}, {"mate-terminal"}},
        {"com.apple.Terminal", {"lxterminal"}, {"lxterminal"}},
        {"com.apple.Terminal", {"qterminal"}, {"qterminal"}},
        {"com.apple.Terminal",
         {"xterm", "uxterm", "x-terminal-emulator"},
         {"debian-xterm", "xterm"}},

        // The ones with panes side by side.
        {"com.googlecode.iterm2", {"terminator"}, {"terminator"}},
        {"com.googlecode.iterm2", {"tilix"}, {"com.gexperts.Tilix"}},
        {"net.kovidgoyal.kitty", {"kitty"}, {"kitty"}},
        {"com.mitchellh.ghostty", {"com.mitchellh.ghostty", "ghostty"}, {"com.mitchellh.ghostty"}},
    };
    return table;
}

} // namespace

const ApplicationNames *ApplicationNames::ofWindowClass(const QString &windowClass)
{
    const QString wanted = windowClass.toLower();
    const auto found = std::ranges::find_if(allNames(), [&](const ApplicationNames &names) {
        return names.windowClasses.contains(wanted);
    });
    return found == allNames().end() ? nullptr : &*found;
}

QStringList ApplicationNames::desktopEntriesOf(const QString &bundleIdentifier)
{
    QStringList entries;
    for (const ApplicationNames &names : allNames()) {
        if (names.bundleIdentifier == bundleIdentifier)
            entries += names.desktopEntries;
    }
    return entries;
}

} // namespace tirlo
