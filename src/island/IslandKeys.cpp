#include "IslandKeys.h"

#include "Island.h"
#include "core/AppState.h"
#include "platform/KeyCodes.h"

namespace tirlo {

namespace {

constexpr std::uint16_t escapeKey = 53;

} // namespace

IslandKeys::IslandKeys(AppState &state, Island &island, const InputMonitor &input,
                       const WindowList &windows)
    : m_state(state)
    , m_island(island)
{
    connect(&input, &InputMonitor::keyDown, this, &IslandKeys::keyDown);
    connect(&windows, &WindowList::applicationActivated, this, &IslandKeys::applicationActivated);
}

void IslandKeys::keyDown(const KeyPress &key)
{
    const bool isExpanded = m_state.mode == IslandMode::expanded;
    if (key.keyCode == escapeKey && isExpanded && !m_state.isPinned) {
        m_island.collapse();
        return;
    }
    const bool isHotkey = m_state.hotkeyEnabled && key.keyCode == m_state.hotkeyCode
        && (key.modifiers & ModifierBits::all) == m_state.hotkeyFlags;
    if (isHotkey && !isExpanded)
        m_island.open(IslandView::overview);
}

/// Keeps what the user was working in, so that the chat can ask about it.
void IslandKeys::applicationActivated(const RunningApplication &application)
{
    if (application.bundleIdentifier != ownBundleIdentifier)
        m_state.lastExternalApp = application;
}

} // namespace tirlo
