#include "IslandPresses.h"

#include "Island.h"
#include "IslandGeometry.h"
#include "IslandPanel.h"
#include "MascotHover.h"
#include "PointerLoop.h"
#include "core/AppState.h"
#include "core/Notifications.h"

#include <QMouseEvent>
#include <QWindow>

#include <utility>

namespace tirlo {

namespace {

/// Whether the control under a press wants to be typed into.
bool takesText(const QWidget *control)
{
    return control && control->isEnabled() && control->testAttribute(Qt::WA_InputMethodEnabled);
}

} // namespace

IslandPresses::IslandPresses(const Parts &parts)
    : m_parts(parts)
{
    // The native window sees every press before the control under it does.
    m_parts.panel.winId();
    m_parts.panel.windowHandle()->installEventFilter(this);
}

bool IslandPresses::eventFilter(QObject *watched, QEvent *event)
{
    // A second quick press comes as a press first, and then once more as a double click.
    const QEvent::Type type = event->type();
    const bool isPress = type == QEvent::MouseButtonPress;
    if (isPress || type == QEvent::MouseButtonRelease) {
        const auto *mouse = static_cast<QMouseEvent *>(event);
        if (mouse->button() == Qt::LeftButton && isPress)
            pressed(mouse->position());
        else if (mouse->button() == Qt::LeftButton)
            released();
    }
    return QObject::eventFilter(watched, event);
}

void IslandPresses::pressed(QPointF local)
{
    // The press may come before the tick that would have seen the pointer arrive.
    m_parts.loop.pollFrame();
    if (!m_parts.loop.wasInIsland())
        return;
    m_pendingIslandClick = true;
    m_parts.hover.cancel();
    if (m_parts.state.mode != IslandMode::expanded)
        return;
    if (IslandGeometry::isBotHit(local, m_parts.state))
        Q_EMIT m_parts.notifications.triggerSlap();
    if (takesText(m_parts.panel.childAt(local.toPoint())))
        m_parts.panel.takeKeyboard();
}

void IslandPresses::released()
{
    if (std::exchange(m_pendingIslandClick, false))
        m_parts.island.click();
}

} // namespace tirlo
