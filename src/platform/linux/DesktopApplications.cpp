#include "DesktopApplications.h"

#include "ApplicationNames.h"
#include "DesktopEntry.h"

#include <algorithm>

namespace tirlo {

std::vector<RunningApplication> DesktopApplications::running() const
{
    std::vector<RunningApplication> applications;
    if (!m_windows.x11())
        return applications;
    for (const xcb_window_t window : m_windows.frontToBack()) {
        const RunningApplication application = m_windows.applicationOf(window);
        if (std::ranges::find(applications, application) == applications.end())
            applications.push_back(application);
    }
    return applications;
}

bool DesktopApplications::activate(const RunningApplication &application)
{
    if (!m_windows.x11())
        return false;
    for (const xcb_window_t window : m_windows.frontToBack()) {
        if (m_windows.applicationOf(window) != application)
            continue;
        m_windows.activate(window);
        return true;
    }
    return false;
}

bool DesktopApplications::open(const QString &bundleIdentifier)
{
    const auto applications = running();
    const auto alive
        = std::ranges::find(applications, bundleIdentifier, &RunningApplication::bundleIdentifier);
    if (alive != applications.end() && activate(*alive))
        return true;
    return std::ranges::any_of(ApplicationNames::desktopEntriesOf(bundleIdentifier),
                               DesktopEntry::launch);
}

bool DesktopApplications::openUrl(const QUrl &url)
{
    const QString scheme = url.scheme();
    if (scheme != QLatin1String("https") && scheme != QLatin1String("http"))
        return false;
    return DesktopEntry::launchHandlerOf(url);
}

} // namespace tirlo
