#include "PointerLoop.h"

#include "Island.h"
#include "IslandGeometry.h"
#include "IslandPanel.h"
#include "IslandSight.h"
#include "MascotHover.h"
#include "core/AppState.h"
#include "ui/motion/FrameDriver.h"

#include <cmath>

namespace tirlo {

namespace {

constexpr double pollsPerSecond = 60;
/// A pointer that moved less, in points, is not worth telling.
constexpr double publishedStep = 1;

} // namespace

PointerLoop::PointerLoop(const Parts &parts, const Pointer &pointer, FrameDriver &driver)
    : m_parts(parts)
    , m_pointer(pointer)
    , m_driver(driver)
{
    m_driver.onFrame = [this] { pollFrame(); };
}

PointerLoop::~PointerLoop()
{
    m_driver.stop();
    m_driver.onFrame = nullptr;
}

void PointerLoop::startPolling()
{
    m_driver.start(pollsPerSecond);
}

void PointerLoop::pollFrame()
{
    const QPointF position = m_pointer.position();
    const QPointF local = position - m_parts.panel.pos();

    publish(position);
    followEdge(isInHitArea(local));
    if (m_wasInIsland)
        m_parts.panel.slideUnder(position);
    m_parts.hover.update(isOverMascot(local), position);
}

bool PointerLoop::isInHitArea(QPointF local) const
{
    if (!IslandSight::mayBeDrawn(m_parts.state))
        return false;
    const bool seen = m_pointer.seesWholeDesktop() || m_parts.panel.underMouse();
    return seen && m_parts.panel.hitArea().contains(local);
}

void PointerLoop::publish(QPointF position)
{
    QPointF &published = m_parts.state.mousePosition;
    const QPointF onScreen = position - m_parts.panel.screenOrigin();
    if (std::abs(onScreen.x() - published.x()) > publishedStep
        || std::abs(onScreen.y() - published.y()) > publishedStep)
        published = onScreen;
}

void PointerLoop::followEdge(bool inside)
{
    if (inside == m_wasInIsland)
        return;
    m_wasInIsland = inside;
    if (inside)
        m_parts.island.pointerEntered();
    else
        m_parts.island.pointerLeft();
}

bool PointerLoop::isOverMascot(QPointF local) const
{
    const AppState &state = m_parts.state;
    return state.mode == IslandMode::expanded && !state.stateOverride.value()
        && IslandGeometry::isBotHit(local, state);
}

} // namespace tirlo
