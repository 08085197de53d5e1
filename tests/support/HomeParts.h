#pragma once

#include "core/AppLog.h"
#include "core/Paths.h"
#include "support/StoreParts.h"

#include <QTemporaryDir>

namespace tirlo {

/// The store and the services around it, in a home of their own.
struct HomeParts : StoreParts
{
    QTemporaryDir home;
    Paths paths{home.path()};
    AppLog log{paths, queue};
};

} // namespace tirlo
