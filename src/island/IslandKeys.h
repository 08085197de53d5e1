#pragma once

#include "platform/InputMonitor.h"
#include "platform/WindowList.h"

#include <QObject>

namespace tirlo {

class AppState;
class Island;

/// The island's few keys, watched from outside any window, and the last other application in front.
class IslandKeys final : public QObject
{
    Q_OBJECT

public:
    /// All of these outlive the keys.
    IslandKeys(AppState &state, Island &island, const InputMonitor &input,
               const WindowList &windows);

private:
    void keyDown(const KeyPress &key);
    void applicationActivated(const RunningApplication &application);

    AppState &m_state;
    Island &m_island;
};

} // namespace tirlo
