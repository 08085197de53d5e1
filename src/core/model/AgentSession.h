#pragma once

#include "BotState.h"

#include <QDateTime>
#include <QString>

namespace tirlo {

/// One session of an agent, of which a pill may have several.
struct AgentSession
{
    /// The agent's own name for it.
    QString id;
    /// Shown name of the folder that it works in.
    QString folder;
    /// What it did last; empty at first.
    QString step;
    BotState state = BotState::idle;
    /// It asked, was not answered here, and now asks in its own terminal.
    bool waitsInTerminal = false;
    /// Since when it has been in this state, local.
    QDateTime since;

    bool operator==(const AgentSession &) const = default;
};

} // namespace tirlo
