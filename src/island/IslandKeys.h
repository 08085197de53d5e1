#pragma once

#include "platform/Hotkey.h"
#include "platform/InputMonitor.h"
#include "platform/WindowList.h"
#include "ui/Observers.h"

#include <QObject>

namespace tirlo {

class AppState;
class Island;
class IslandKeyboard;

/// The island's few keys, watched from outside any window, and the last other application in front.
class IslandKeys final : public QObject
{
    Q_OBJECT

public:
    /// What tells of the keys and of the windows.
    struct Desktop
    {
        const InputMonitor &input;
        Hotkey &hotkey;
        const WindowList &windows;
    };

    /// All of these outlive the keys.
    IslandKeys(AppState &state, Island &island, IslandKeyboard &keyboard, const Desktop &desktop);

private:
    void keyDown(const KeyPress &key);
    void hotkeyPressed();
    void followHotkey();
    void applicationActivated(const RunningApplication &application);

    AppState &m_state;
    Island &m_island;
    IslandKeyboard &m_keyboard;
    Hotkey &m_hotkey;
    Observers m_observers;
};

} // namespace tirlo
