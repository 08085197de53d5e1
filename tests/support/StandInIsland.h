#pragma once

#include "core/IslandIntents.h"
#include "island/IslandWriter.h"

namespace tirlo {

/// Stands in for the island: puts it into any mode and view for a test, and turns to what is asked
/// for at once.
class StandInIsland final : public IslandIntents, public IslandWriter
{
public:
    explicit StandInIsland(AppState &state)
        : IslandWriter(state)
        , m_state(state)
    {
    }

    void show(IslandView card) override { setView(card); }

    void leave(IslandView card) override
    {
        if (m_state.view == card)
            setView(m_state.tasks.value().isEmpty() ? IslandView::empty : IslandView::overview);
    }

    void say(const QString &note) override
    {
        m_state.noteMessage = note;
        setView(IslandView::note);
    }

private:
    AppState &m_state;
};

} // namespace tirlo
