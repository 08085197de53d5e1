#include "TabButton.h"

#include "core/AppState.h"
#include "core/IslandIntents.h"
#include "island/IslandMotion.h"
#include "ui/AccessibleRole.h"
#include "ui/Color.h"
#include "ui/Style.h"

#include <utility>

namespace tirlo {

namespace {

IconButtonStyle onStyle()
{
    return {.color = Style::primaryText,
            .hoveredColor = Style::primaryText,
            .fill = Style::selectedTab,
            .hoveredFill = Style::selectedTab};
}

IconButtonStyle offStyle()
{
    return {.color = Style::secondaryText,
            .hoveredColor = Style::hoveredText,
            .hoveredFill = withOpacity(Style::white, Style::raisedOpacity)};
}

} // namespace

TabButton::TabButton(QLatin1String icon, const QString &name, IslandView view,
                     const ViewContext &context, std::function<void()> preAction, QWidget *parent)
    : IconButton(frame, offStyle(), parent)
    , m_view(view)
    , m_state(context.state)
    , m_island(context.island)
    , m_clock(context.frames)
    , m_preAction(std::move(preAction))
{
    AccessibleRole::set(*this, QAccessible::PageTab);
    setIcon(icon, name);
    setCheckable(true);
    updateOn();
    m_observers.follow(m_state.view, [this] { updateOn(); });
    connect(this, &TabButton::clicked, this, &TabButton::choose);
}

bool TabButton::isOn() const
{
    const IslandView shown = m_state.view;
    return shown == m_view || (m_view == IslandView::overview && shown == IslandView::empty);
}

void TabButton::updateOn()
{
    if (isOn() && !isChecked()) {
        QAccessibleEvent selection(this, QAccessible::Selection);
        QAccessible::updateAccessibility(&selection);
    }
    setChecked(isOn());
    fadeTo(isOn() ? onStyle() : offStyle(), IslandMotion::viewSpring, m_clock);
}

void TabButton::choose()
{
    if (m_preAction)
        m_preAction();
    m_island.show(m_view);
}

} // namespace tirlo
