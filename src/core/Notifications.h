#pragma once

#include "model/BotState.h"
#include "model/IslandView.h"

#include <QObject>

namespace tirlo {

/// The process-wide notification centre: parts of the program talk past each other through it.
///
/// Each signal is one notification; posting is synchronous and happens on the main thread.
class Notifications : public QObject
{
    Q_OBJECT

public:
    using QObject::QObject;

Q_SIGNALS:
    /// Open the island on this view.
    void hookExpand(tirlo::IslandView view);
    /// Show the compact island.
    void hookReveal();
    /// Close the island.
    void islandCollapse();
    /// Open the settings window.
    void openFullSettings();

    /// The mascot shows an emote.
    void triggerEmote(tirlo::BotEmote emote);
    /// The mascot takes a slap.
    void triggerSlap();
    /// The mascot was slapped too often.
    void botDizzy();
    /// Target of the mascot's eye scale; 1 is its rest.
    void botSetTgEs(double scale);
    void botBlink();
    /// Target of the mascot's morph, 0 soft body to 1 box form.
    void botMorphTo(double morph);
    void botGulp();
    void botGreet();

    /// The greeting has played to its end.
    void greetComplete();
    /// The greeting is cut short.
    void greetingInterrupt();
    /// The pointer entered the island during the greeting.
    void greetingHover();
};

} // namespace tirlo
