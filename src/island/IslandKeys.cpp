#include "IslandKeys.h"

#include "core/AppState.h"
#include "platform/KeyCodes.h"

#include <utility>

namespace tirlo {

namespace {

constexpr std::uint16_t escapeKey = 53;

} // namespace

IslandKeys::IslandKeys(AppState &state, const InputMonitor &input, const WindowList &windows,
                       Actions actions)
    : m_state(state)
    , m_actions(std::move(actions))
{
    connect(&input, &InputMonitor::keyDown, this, &IslandKeys::keyDown);
    connect(&windows, &WindowList::applicationActivated, this, &IslandKeys::applicationActivated);
}

void IslandKeys::keyDown(const KeyPress &key)
{
    const bool isExpanded = m_state.mode == IslandMode::expanded;
    if (key.keyCode == escapeKey && isExpanded && !m_state.isPinned) {
        m_actions.collapse();
        return;
    }
    const bool isHotkey = m_state.hotkeyEnabled && key.keyCode == m_state.hotkeyCode
        && (key.modifiers & ModifierBits::all) == m_state.hotkeyFlags;
    if (isHotkey && !isExpanded)
        m_actions.openOverview();
}

/// Keeps what the user was working in, so that the chat can ask about it.
void IslandKeys::applicationActivated(const RunningApplication &application)
{
    if (application.bundleIdentifier != ownBundleIdentifier)
        m_state.lastExternalApp = application;
}

} // namespace tirlo
