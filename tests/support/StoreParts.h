#pragma once

#include "core/AppLog.h"
#include "core/AppState.h"
#include "core/Notifications.h"
#include "core/Paths.h"
#include "support/ManualQueue.h"
#include "support/MemoryStore.h"
#include "support/RecordingSoundEngine.h"

#include <QTemporaryDir>

namespace tirlo {

/// The store and the services around it, in a home and a time of their own.
struct StoreParts
{
    QTemporaryDir home;
    Paths paths{home.path()};
    ManualQueue queue;
    MemoryStore store;
    AppState state{store, queue};
    Notifications notifications;
    RecordingSoundEngine sound;
    AppLog log{paths, queue};
};

} // namespace tirlo
