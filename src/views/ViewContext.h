#pragma once

#include "IslandActions.h"

namespace tirlo {

class AppState;
class Applications;
class CardSight;
class FrameClock;
class IslandIntents;
class KeychainStore;
class MainQueue;
class Notifications;
class Screens;
class SoundEngine;

/// The collaborators of the island's views; all of them outlive every view.
struct ViewContext
{
    AppState &state;
    Notifications &notifications;
    IslandIntents &island;
    SoundEngine &sounds;
    MainQueue &queue;
    FrameClock &frames;
    const Screens &screens;
    Applications &applications;
    KeychainStore &keychain;
    const IslandActions &actions;
    CardSight &sight;
};

} // namespace tirlo
