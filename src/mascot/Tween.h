#pragma once

#include "Easing.h"

#include <array>
#include <cassert>
#include <cstddef>
#include <initializer_list>
#include <optional>

namespace tirlo {

class BotEngine;

/// The mascot's scalars that a tween can move; each stands for the engine's field of that name.
enum class BotProperty {
    yaw,
    pitch,
    roll,
    tilt,
    open,
    sx,
    sy,
    oy,
    ox,
    tint,
    morph,
    hands,
    blush,
    es,
    badgeS,
};

inline constexpr std::size_t botPropertyCount = 15;

/// One leg of a tween.
struct TweenKey
{
    double target = 0;
    /// Milliseconds.
    double duration = 0;
    Ease ease = linearEase;
};

/// The legs of one tween, kept in place so that starting a tween never allocates.
class TweenKeys
{
public:
    static constexpr std::size_t capacity = 6;

    constexpr TweenKeys() = default;
    constexpr TweenKeys(std::initializer_list<TweenKey> keys)
    {
        assert(keys.size() <= capacity);
        for (const TweenKey &key : keys)
            m_keys[m_size++] = key;
    }

    [[nodiscard]] constexpr std::size_t size() const { return m_size; }
    [[nodiscard]] constexpr const TweenKey &operator[](std::size_t i) const { return m_keys[i]; }

private:
    std::array<TweenKey, capacity> m_keys;
    std::size_t m_size = 0;
};

/// A scalar's way through some legs, one after the other.
struct Tween
{
    BotProperty property = BotProperty::yaw;
    TweenKeys keys;
    /// The leg that runs.
    std::size_t keyIndex = 0;
    /// Value at the start of this leg.
    double from = 0;
    /// Media time in milliseconds when this leg began.
    double startTime = 0;
    /// Called once the last leg has ended, with the property free again; may be null.
    void (*onComplete)(BotEngine &) = nullptr;

    /// Progress of the running leg from 0 to 1.
    ///
    /// A leg of negative duration never gets past 0, so it holds its value until it is replaced.
    [[nodiscard]] double progress(double nowMs) const;
};

/// The running tweens, at most one a property. A property with a tween is locked: it leaves the
/// smoothing alone, and idle blinks and hops keep off it.
class TweenTable
{
public:
    /// Puts the tween in place; one that runs on the same property is dropped without completing.
    void start(const Tween &tween) { slot(tween.property) = tween; }
    void remove(BotProperty property) { slot(property).reset(); }

    [[nodiscard]] bool isLocked(BotProperty property) const
    {
        return m_tweens[std::size_t(property)].has_value();
    }

    /// The tween on the property, empty when there is none.
    [[nodiscard]] std::optional<Tween> &slot(BotProperty property)
    {
        return m_tweens[std::size_t(property)];
    }

    [[nodiscard]] bool isEmpty() const;

private:
    std::array<std::optional<Tween>, botPropertyCount> m_tweens;
};

} // namespace tirlo
