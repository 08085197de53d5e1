#include "SettingsOpener.h"

#include "SettingsPlacement.h"

#include <QWindow>

namespace tirlo {

SettingsOpener::SettingsOpener(HookInstallers &hooks, const Paths &paths)
    : m_hooks(hooks)
    , m_paths(paths)
{
}

void SettingsOpener::open(const std::optional<ScreenInfo> &screen)
{
    if (!m_window || !m_window->isVisible()) {
        m_window = std::make_unique<SettingsWindow>(m_hooks, m_paths);
        // The title bar counts too, and is not there before.
        QObject::connect(m_window.get(), &SettingsWindow::framed, m_window.get(),
                         [this, screen] { place(screen); });
    }
    place(screen);
    m_window->setWindowState(m_window->windowState() & ~Qt::WindowMinimized);
    m_window->show();
    m_window->raise();
    m_window->activateWindow();
}

void SettingsOpener::place(const std::optional<ScreenInfo> &screen)
{
    if (!screen)
        return;
    // The frame with its title bar is what stands there. The native window knows it as it is; the
    // widget remembers how it was before the desktop had framed it.
    const QMargins frame = m_window->nativeWindow()->frameMargins();
    const QRectF place = placeBelowIsland(*screen, m_window->size().grownBy(frame),
                                          m_window->minimumSize().grownBy(frame));
    m_window->setGeometry(place.toRect().marginsRemoved(frame));
}

} // namespace tirlo
