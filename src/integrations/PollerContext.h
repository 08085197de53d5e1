#pragma once

#include "ServiceHosts.h"

namespace tirlo {

class AppLog;
class AppState;
class HttpClient;
class KeychainStore;
class MainQueue;
class Notifications;
class SoundEngine;

/// What the pollers work on; everything outlives them.
struct PollerContext
{
    AppState &state;
    Notifications &notifications;
    SoundEngine &sound;
    MainQueue &queue;
    HttpClient &http;
    const KeychainStore &keychain;
    const AppLog &log;
    ServiceHosts hosts = {};
};

} // namespace tirlo
