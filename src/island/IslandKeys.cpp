#include "IslandKeys.h"

#include "Island.h"
#include "IslandKeyboard.h"
#include "core/AppState.h"

namespace tirlo {

namespace {

constexpr std::uint16_t escapeKey = 53;

} // namespace

IslandKeys::IslandKeys(AppState &state, Island &island, IslandKeyboard &keyboard,
                       const Desktop &desktop)
    : m_state(state)
    , m_island(island)
    , m_keyboard(keyboard)
    , m_hotkey(desktop.hotkey)
{
    connect(&desktop.input, &InputMonitor::keyDown, this, &IslandKeys::keyDown);
    connect(&desktop.windows, &WindowList::applicationActivated, this,
            &IslandKeys::applicationActivated);
    connect(&m_hotkey, &Hotkey::pressed, this, &IslandKeys::hotkeyPressed);
    connect(&m_hotkey, &Hotkey::takenChanged, this,
            [this](bool isTaken) { m_state.hotkeyIsTaken = isTaken; });
    m_observers.follow(m_state.hotkeyEnabled, [this] { followHotkey(); });
    m_observers.follow(m_state.hotkeyFlags, [this] { followHotkey(); });
    m_observers.follow(m_state.hotkeyCode, [this] { followHotkey(); });
    followHotkey();
}

void IslandKeys::keyDown(const KeyPress &key)
{
    // What is typed at a locked screen is not meant for the island.
    const bool closes
        = m_state.mode == IslandMode::expanded && !m_state.isPinned && !m_state.isLocked;
    if (key.keyCode == escapeKey && closes)
        m_island.collapse();
}

/// Opens the island, and on an open one gives the keyboard to it and back.
void IslandKeys::hotkeyPressed()
{
    if (m_state.isLocked)
        return;
    if (m_state.mode == IslandMode::expanded)
        m_keyboard.toggle();
    else
        m_island.open(IslandView::overview);
}

void IslandKeys::followHotkey()
{
    m_hotkey.hold(m_state.hotkeyEnabled
                      ? std::optional(KeyPress{m_state.hotkeyCode, m_state.hotkeyFlags})
                      : std::nullopt);
}

/// Keeps what the user was working in, so that the chat can ask about it.
void IslandKeys::applicationActivated(const RunningApplication &application)
{
    if (application.bundleIdentifier != ownBundleIdentifier)
        m_state.lastExternalApp = application;
}

} // namespace tirlo
