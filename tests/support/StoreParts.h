#pragma once

#include "core/AppState.h"
#include "core/Notifications.h"
#include "support/ManualQueue.h"
#include "support/MemoryStore.h"
#include "support/RecordingSoundEngine.h"

namespace tirlo {

/// The store and what every part of the program shares with it, in a time of their own.
struct StoreParts
{
    ManualQueue queue;
    MemoryStore store;
    AppState state{store, queue};
    Notifications notifications;
    RecordingSoundEngine sounds;
};

} // namespace tirlo
