#pragma once

#include "platform/InputMonitor.h"
#include "platform/WindowList.h"

#include <QObject>

#include <functional>

namespace tirlo {

class AppState;

/// The island's few keys, watched from outside any window, and the last other application in front.
class IslandKeys final : public QObject
{
    Q_OBJECT

public:
    /// What the keys do.
    struct Actions
    {
        std::function<void()> collapse;
        std::function<void()> openOverview;
    };

    /// The store and both services outlive the keys.
    IslandKeys(AppState &state, const InputMonitor &input, const WindowList &windows,
               Actions actions);

private:
    void keyDown(const KeyPress &key);
    void applicationActivated(const RunningApplication &application);

    AppState &m_state;
    const Actions m_actions;
};

} // namespace tirlo
