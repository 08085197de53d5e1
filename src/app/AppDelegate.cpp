#include "AppDelegate.h"

#include "views/IslandRootView.h"

#include <QDebug>

namespace tirlo {

AppDelegate::AppDelegate()
    : m_hookServer({m_state, m_notifications, m_sounds, m_queue, m_log}, m_paths)
    , m_islandActions{.sendApprovalDecision = [this](const QString &decision) {
        m_hookServer.sendApprovalDecision(decision);
    }}
{
}

bool AppDelegate::applicationDidFinishLaunching()
{
    if (!m_screens.main()) {
        qCritical("Tirlo needs a screen and found none.");
        return false;
    }
    setupIsland();
    return true;
}

void AppDelegate::setupIsland()
{
    m_islandController.emplace(m_screens, m_windowShape, m_state, m_notifications, m_sounds,
                               m_queue);
    m_islandController->setContent(new IslandRootView(
        {m_state, m_notifications, m_sounds, m_queue, m_islandActions}));
    m_islandController->showWindow();
    m_hookServer.start();
}

} // namespace tirlo
