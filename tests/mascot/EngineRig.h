#pragma once

#include "mascot/BotEngine.h"
#include "support/ManualQueue.h"

#include <QStringList>

#include <optional>

namespace tirlo {

/// A mascot in manual time whose every random value is `chance`.
class EngineRig
{
public:
    explicit EngineRig(double firstChance = 0.5)
        : chance(firstChance)
    {
        // Away from 0, which stands for "never" in several fields.
        queue.advance(100);
        bot.emplace(
            queue, [this] { return chance; },
            BotHooks{.playSound = [this](QLatin1String name) { sounds.append(name); },
                     .becameDizzy = [this] { ++dizzySpells; }});
    }

    BotEngine *operator->() { return &*bot; }

    void frame()
    {
        queue.advance(0.001);
        bot->update(BotEngine::frameStep);
    }

    /// Plays that time in frames of a millisecond, so that moments can be met exactly.
    void play(double seconds)
    {
        for (int i = 0; i < int(seconds * 1000 + 0.5); ++i)
            frame();
    }

    /// Plays until the condition holds; the seconds that took, or nothing after ten.
    template<typename Condition>
    std::optional<double> timeUntil(Condition condition)
    {
        for (int i = 0; i <= 10000; ++i) {
            if (condition())
                return i / 1000.0;
            frame();
        }
        return std::nullopt;
    }

    double now() const { return queue.mediaTime(); }

    ManualQueue queue;
    double chance;
    QStringList sounds;
    int dizzySpells = 0;
    std::optional<BotEngine> bot;
};

} // namespace tirlo
