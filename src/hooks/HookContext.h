#pragma once

#include "core/AppLog.h"

#include <QString>

namespace tirlo {

class AppState;
class IslandIntents;
class MainQueue;
class Notifications;
class ProcessWatch;
class SoundEngine;

/// What the hook subsystem works on; everything outlives it.
struct HookContext
{
    AppState &state;
    Notifications &notifications;
    IslandIntents &island;
    SoundEngine &sound;
    MainQueue &queue;
    ProcessWatch &processes;
    const AppLog &log;

    /// Appends a line to the log of the hooks.
    void writeLog(const QString &line) const
    {
        log.appendAppLog(QStringLiteral("qv.log"), line, QStringLiteral("yyyy-MM-dd HH:mm:ss"));
    }
};

} // namespace tirlo
