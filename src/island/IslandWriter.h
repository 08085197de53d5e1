#pragma once

#include "core/AppState.h"

namespace tirlo {

/// The one hand that writes the island's mode and view into the store: the island's own, and that
/// of a test or a picture that sets the scene.
class IslandWriter
{
public:
    /// The store outlives the writer.
    explicit IslandWriter(AppState &state)
        : m_state(state)
    {
    }

    void setMode(IslandMode mode) { m_state.mode.m_property = mode; }
    void setView(IslandView view) { m_state.view.m_property = view; }

private:
    AppState &m_state;
};

} // namespace tirlo
