#include "IslandPanel.h"

#include "core/AppState.h"
#include "core/IslandLayout.h"
#include "platform/PanelWindow.h"
#include "platform/WindowShape.h"
#include "ui/AccessibleRole.h"
#include "ui/FocusWalk.h"

#include <QEvent>
#include <QWindow>

#include <algorithm>
#include <cmath>

namespace tirlo {

namespace {

/// How far, in points, the hit area reaches over the island's edges.
constexpr double hitMargin = 6;

constexpr Qt::WindowFlags panelFlags = Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint
    | Qt::NoDropShadowWindowHint | Qt::BypassWindowManagerHint | Qt::WindowDoesNotAcceptFocus;

} // namespace

IslandPanel::IslandPanel(AppState &state, WindowShape &shape, PanelWindow &window,
                         bool pointerSeenEverywhere)
    : QWidget(nullptr, panelFlags)
    , m_state(state)
    , m_shape(shape)
    , m_window(window)
    , m_takesPointerInHitArea(!pointerSeenEverywhere)
{
    setAttribute(Qt::WA_ShowWithoutActivating);
    setAttribute(Qt::WA_TranslucentBackground);
    setAttribute(Qt::WA_AlwaysShowToolTips);
    setFixedSize(IslandConst::panelWidth, IslandConst::panelHeight);
    setWindowTitle(QStringLiteral("Tirlo"));
    AccessibleRole::set(*this, QAccessible::Window);

    const auto update = [this] { updateInputRegion(); };
    m_observers.follow(m_state.mode, [this] {
        if (m_overhang > 0 && m_state.mode != IslandMode::expanded)
            hang(0);
    });
    m_observers.follow(m_state.mode, update);
    m_observers.follow(m_state.view, update);
    m_observers.follow(m_state.chatHistory, update);
    m_observers.follow(m_state.cardGrowth, update);
}

void IslandPanel::placeOn(const ScreenInfo &screen, const IslandScreenGeometry &notch, double depth)
{
    notchWidth = notch.notchWidth;
    notchHeight = notch.notchHeight;
    m_screenOrigin = screen.frame.topLeft() + QPointF(0, depth);
    m_screenWidth = screen.frame.width();
    m_overhang = std::max((IslandConst::expandedWidth - m_screenWidth) / 2, 0.0);
    hang(0);
    updateInputRegion();
}

void IslandPanel::slideUnder(QPointF pointer)
{
    if (m_overhang == 0)
        return;
    const double middle = m_screenOrigin.x() + m_screenWidth / 2;
    const double share = std::clamp((pointer.x() - middle) / (m_screenWidth / 2), -1.0, 1.0);
    if (m_state.mode == IslandMode::expanded)
        hang(-m_overhang * share);
}

/// Goes so far to the right of the screen's middle, in points.
void IslandPanel::hang(double aside)
{
    const double left = m_screenOrigin.x() + (m_screenWidth - IslandConst::panelWidth) / 2 + aside;
    m_place = {int(std::round(left)), int(std::round(m_screenOrigin.y()))};
    goToItsPlace();
}

bool IslandPanel::isAtItsPlace() const
{
    return pos() == m_place && size() == QSize(IslandConst::panelWidth, IslandConst::panelHeight);
}

void IslandPanel::goToItsPlace()
{
    setGeometry({m_place, QSize(IslandConst::panelWidth, IslandConst::panelHeight)});
}

QRectF IslandPanel::currentIslandFrame(double nw, double nh) const
{
    const QSizeF size = IslandLayout::islandSize(m_state.mode, m_state.view, nw, nh,
                                                 m_state.chatHistory.value().size(),
                                                 IslandLayout::cardGrowth(m_state.view, m_state));
    return {QPointF((width() - size.width()) / 2, 0), size};
}

QRectF IslandPanel::hitArea() const
{
    const bool isTight = !m_state.hasNotch && m_state.mode != IslandMode::expanded;
    const double margin = isTight ? 0 : hitMargin;
    return currentIslandFrame(notchWidth, notchHeight).adjusted(-margin, -margin, margin, margin);
}

void IslandPanel::setContent(QWidget *content)
{
    content->setParent(this);
    content->setGeometry(rect());
    content->show();
}

void IslandPanel::setDrawn(const IslandShape &outline)
{
    m_drawn = outline;
    updateInputRegion();
}

void IslandPanel::takeKeyboard()
{
    winId();
    windowHandle()->setFlag(Qt::WindowDoesNotAcceptFocus, false);
    m_window.takeKeyboard(*windowHandle());
}

bool IslandPanel::releaseKeyboard()
{
    if (!windowHandle() || windowHandle()->flags().testFlag(Qt::WindowDoesNotAcceptFocus))
        return true;
    windowHandle()->setFlag(Qt::WindowDoesNotAcceptFocus);
    return m_window.returnKeyboard(*windowHandle());
}

bool IslandPanel::event(QEvent *event)
{
    const bool handled = QWidget::event(event);
    if (event->type() == QEvent::WinIdChange) {
        // A new native window takes the pointer everywhere until told otherwise.
        m_inputShape = {.width = 0, .height = 0};
        updateInputRegion();
    }
    return handled;
}

bool IslandPanel::focusNextPrevChild(bool next)
{
    return FocusWalk::step(*this, next);
}

void IslandPanel::updateInputRegion()
{
    QWindow *native = windowHandle();
    if (!native || !native->handle())
        return;
    const IslandShape shape = m_drawn.value_or(IslandGeometry::islandShape(
        m_state.mode, currentIslandFrame(notchWidth, notchHeight).size()));
    if (shape == m_inputShape)
        return;
    m_inputShape = shape;
    const QPointF corner((width() - shape.width) / 2, 0);
    // An island on its way takes no more than what is drawn of it.
    const QRectF drawn = QRectF(corner, QSizeF(shape.width, shape.height))
                             .marginsAdded(QMarginsF(hitMargin, hitMargin, hitMargin, hitMargin));
    m_shape.setInputRegion(*native,
                           m_takesPointerInHitArea ? QRegion((hitArea() & drawn).toAlignedRect())
                                                   : shape.region().translated(corner.toPoint()));
}

} // namespace tirlo
