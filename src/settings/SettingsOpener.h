#pragma once

#include "SettingsWindow.h"
#include "core/Paths.h"

#include <memory>
#include <optional>

namespace tirlo {

struct ScreenInfo;

/// Brings up the settings window: the one on show, or a new one.
class SettingsOpener
{
public:
    /// The installers outlive the opener and its window.
    SettingsOpener(HookInstallers &hooks, const Paths &paths);

    /// Shows the window below the island on this screen, else in the desktop's choice of place.
    void open(const std::optional<ScreenInfo> &screen);

private:
    void place(const std::optional<ScreenInfo> &screen);

    HookInstallers &m_hooks;
    const Paths m_paths;
    std::unique_ptr<SettingsWindow> m_window;
};

} // namespace tirlo
