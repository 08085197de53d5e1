#pragma once

#include "IslandActions.h"

namespace tirlo {

class AppState;
class MainQueue;
class Notifications;
class SoundEngine;

/// The collaborators of the island's views; all of them outlive every view.
struct ViewContext
{
    AppState &state;
    Notifications &notifications;
    SoundEngine &sounds;
    MainQueue &queue;
    const IslandActions &actions;
};

} // namespace tirlo
