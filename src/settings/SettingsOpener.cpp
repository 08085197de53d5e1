#include "SettingsOpener.h"

#include "SettingsPlacement.h"

namespace tirlo {

void SettingsOpener::open(const std::optional<ScreenInfo> &screen)
{
    if (!m_window || !m_window->isVisible())
        m_window = std::make_unique<SettingsWindow>();
    if (screen) {
        const QRectF place = placeBelowIsland(*screen, m_window->size(), m_window->minimumHeight());
        m_window->setGeometry(place.toRect());
    }
    m_window->show();
    m_window->raise();
    m_window->activateWindow();
}

} // namespace tirlo
