#pragma once

#include "Animation.h"

#include <QPointF>

#include <algorithm>
#include <cmath>

namespace tirlo {

/// A value over time that is somewhere on its way to a target; nothing ticks in it.
///
/// All times are media time in seconds. T is double or QPointF. A spring is at rest once all its
/// energy can't carry it further than `restDistance` from the target, nor further than the share
/// `restShare` of what it set out with; a curve at the end of its duration. From then on the value
/// is the target itself.
template<typename T>
class Animated
{
public:
    /// In the unit of the value: for lengths, well under a pixel.
    static constexpr double restDistance = 0.05;
    /// For values of small range: opacity from 0 to 1 ends under one step of a colour channel.
    static constexpr double restShare = 0.001;

    explicit Animated(const T &value = T())
        : m_start(value)
        , m_target(value)
    {
    }

    [[nodiscard]] T valueAt(double time) const { return sampleAt(time).value; }

    /// In units of the value a second; zero while a delay lasts and at rest.
    [[nodiscard]] T velocityAt(double time) const { return sampleAt(time).velocity; }

    /// True when the value no longer changes from `time` on.
    [[nodiscard]] bool isAtRest(double time) const { return sampleAt(time).isAtRest; }

    /// Where the value is or is going to.
    [[nodiscard]] const T &target() const { return m_target; }

    /// Sets off for the target from the present value; a spring keeps the present velocity.
    ///
    /// A target that is already being approached is left to arrive as it does. A delay begins
    /// with a standstill at the present value.
    void animateTo(const T &target, const Animation &animation, double now)
    {
        if (target == m_target)
            return;

        const Sample present = sampleAt(now);
        const bool keepsVelocity
            = std::holds_alternative<Spring>(animation.motion) && animation.delay <= 0;
        m_start = present.value;
        m_startVelocity = keepsVelocity ? present.velocity : T();
        m_target = target;
        m_animation = animation;
        m_startTime = now + std::max(0.0, animation.delay);
    }

    /// Stands at the value from now on, without motion.
    void jumpTo(const T &value)
    {
        m_start = value;
        m_startVelocity = T();
        m_target = value;
    }

private:
    struct Sample
    {
        T value;
        T velocity;
        bool isAtRest;
    };

    [[nodiscard]] Sample sampleAt(double time) const
    {
        const T distance = m_start - m_target;
        if (distance == T() && m_startVelocity == T())
            return atTarget();
        const double elapsed = time - m_startTime;
        if (elapsed < 0)
            return {m_start, T(), false};

        if (const auto *curve = std::get_if<TimingCurve>(&m_animation.motion)) {
            if (elapsed >= curve->duration)
                return atTarget();
            return {m_target + distance * (1 - curve->progressAt(elapsed)),
                    distance * -curve->speedAt(elapsed), false};
        }
        return springSample(std::get<Spring>(m_animation.motion), distance, elapsed);
    }

    [[nodiscard]] Sample springSample(const Spring &spring, const T &distance, double elapsed) const
    {
        if (spring.response <= 0)
            return atTarget();

        const SpringFactors factors = spring.factorsAt(elapsed);
        const T displacement
            = distance * factors.valuePerDisplacement + m_startVelocity * factors.valuePerVelocity;
        const T velocity = distance * factors.velocityPerDisplacement
            + m_startVelocity * factors.velocityPerVelocity;

        // Energy only ever shrinks, so this reach bounds every later displacement: a fast pass
        // through the target is not taken for rest.
        const double frequency = spring.frequency();
        const double reach = std::hypot(length(displacement), length(velocity) / frequency);
        const double firstReach = std::hypot(length(distance), length(m_startVelocity) / frequency);
        if (reach <= std::min(restDistance, restShare * firstReach))
            return atTarget();
        return {m_target + displacement, velocity, false};
    }

    [[nodiscard]] Sample atTarget() const { return {m_target, T(), true}; }

    [[nodiscard]] static double length(double value) { return std::abs(value); }
    [[nodiscard]] static double length(const QPointF &value)
    {
        return std::hypot(value.x(), value.y());
    }

    T m_start;
    T m_startVelocity{};
    T m_target;
    Animation m_animation = Animation::none();
    double m_startTime = 0;
};

} // namespace tirlo
