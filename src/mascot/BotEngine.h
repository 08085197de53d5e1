#pragma once

#include "BotStates.h"
#include "Particle.h"
#include "Tween.h"
#include "UniformSource.h"
#include "platform/MainQueue.h"

#include <QObject>
#include <QString>

#include <array>
#include <functional>
#include <limits>
#include <optional>
#include <vector>

namespace tirlo {

/// Whom a mascot tells about what it does; an unset one is not told.
struct BotHooks
{
    /// A sound by its name.
    std::function<void(QLatin1String name)> playSound;
    /// It was slapped too often.
    std::function<void()> becameDizzy;
};

/// All that gives one mascot its life: its pose, its mood and what it is about to do.
///
/// The owner calls update() once a frame and draws from the fields. Angles are radians, positions
/// are in body radii, blends run from 0 to 1, times are seconds of the media clock. Main thread
/// only; delayed steps of a sequence die with the engine.
class BotEngine
{
public:
    using Color = std::array<double, 3>;

    /// End of an eye override that never ends.
    static constexpr double forever = std::numeric_limits<double>::max();

    /// The `dt` of every drawn frame, at any frame rate: the smoothing is tuned to it.
    static constexpr double frameStep = 0.05;

    explicit BotEngine(MainQueue &queue, UniformSource random = systemUniform, BotHooks hooks = {});
    BotEngine(const BotEngine &) = delete;
    BotEngine &operator=(const BotEngine &) = delete;

    /// A small mascot of a pill: no pointer gaze, larger eyes, always breathing.
    bool isMini = false;
    /// A flat body colour in place of the shaded grey.
    std::optional<BotColor> bodyColor;

    // The pose.
    /// Head turn and nod: they move both eyes over the body as on a sphere.
    double yaw = 0;
    double pitch = 0;
    /// Added to the nod, through whole turns in a somersault of the eyes.
    double roll = 0;
    /// Rotation of the whole body.
    double tilt = 0;
    /// Eyelids; 1 is open.
    double open = 1;
    /// Scale of the body.
    double sx = 1;
    double sy = 1;
    /// Offset of the body.
    double oy = 0;
    double ox = 0;
    /// Strength of the state colour over the grey body.
    double tint = 0;
    /// 0 is the soft body, 1 the box with a slot.
    double morph = 0;
    /// Size of the hands; 0 hides them.
    double hands = 0;
    double blush = 0;
    /// Eye scale.
    double es = 1;
    /// Badge scale; 0 hides it.
    double badgeS = 0;

    // What the smoothing eases the pose toward.
    double tgYaw = 0;
    double tgPitch = 0;
    double tgTilt = 0;
    double tgSy = 1;
    double tgSx = 1;
    double tgEs = 1;

    /// Canvas height in points kept above the body for particles.
    double particleOverhang = 0;

    // The slot's opening on its spring.
    double slotH = 0;
    double slotHTarget = 0;
    double slotHVel = 0;
    bool isChewing = false;

    /// The state colour, now and where it goes.
    Color col{0.902, 0.914, 0.933};
    Color colT{0.902, 0.914, 0.933};

    BotState state = BotState::idle;
    BotStateCfg cfg = BotStates::row(BotState::idle);

    /// Eyes that win over those of the state, until a time.
    std::optional<EyeShape> eyeOverride;
    double eyeOverrideUntil = 0;
    /// What an override falls back to.
    std::optional<EyeShape> permanentEye;
    std::optional<BotEmote> permanentEmote;
    double miniNextBehavior = 0;

    std::optional<BadgeType> badge;
    /// Names the badge asked for last.
    QString badgeKey = QStringLiteral("none");
    /// Counts badge changes: a delayed step with an older number is stale.
    int badgeToken = 0;

    TweenTable tweens;
    /// In order of birth.
    std::vector<Particle> particles;

    /// The pointer's direction, -1 to 1; x to the right, y upward.
    double lookX = 0;
    double lookY = 0;

    /// Time of the last update.
    double lastTime;
    /// Origin of the engine's phase clock, so that no two breathe in step.
    double t0;
    double nextBlink;
    /// The second blink of a pair, if one is due.
    std::optional<double> secondBlink;
    double waveUntil = 0;
    double waveStart = 0;
    /// Counts greetings: a delayed step with an older number is stale.
    int greetToken = 0;
    /// Last tick of snoring and sweating.
    double lastAmbient = 0;
    std::vector<double> slapTimes;
    QPointF miniLookTarget;
    double miniLookNextTime = 0;

    /// Moves everything on by one frame; `dt` in seconds is the step of smoothing and particles.
    void update(double dt);

    /// Takes on a state with its entrance; does nothing when it is in it, unless forced.
    void setState(BotState newState, bool force);
    /// Shrinks the badge away and pops in the new one; the latest request wins.
    void setBadge(const std::optional<BadgeType> &newBadge);
    /// Gives a mini its standing expression, or takes it away.
    void setPermanentEmote(std::optional<BotEmote> emote);

    /// Plays an expression; `duration` in seconds.
    void triggerEmote(BotEmote emote, double duration);
    /// Takes a slap; three within 1.7 s make it dizzy.
    void slap();
    /// Swallows a file.
    void gulp();
    /// Waves a hand.
    void greet();
    /// Folds the hands and forgets the rest of a running greeting.
    void interruptGreet();
    /// Blinks, unless the lids are moving.
    void blink();
    void squash();
    /// Turns the eyes over the head and round again.
    void doRoll(double milliseconds, int turns);
    /// Lets a burst of particles go, born one after the other.
    void emitParticles(Particle::ParticleType type, int count);

    /// Moves a property through the keys from where it is, in place of any tween on it.
    void startTween(BotProperty property, const TweenKeys &keys,
                    void (*onComplete)(BotEngine &) = nullptr);
    [[nodiscard]] bool isLocked(BotProperty property) const { return tweens.isLocked(property); }

    void setProperty(BotProperty property, double value);
    [[nodiscard]] double getProperty(BotProperty property) const;

    /// The eyes on show while it is no box.
    [[nodiscard]] EyeShape shownEye() const { return eyeOverride.value_or(cfg.eye); }

private:
    // The steps of update(), in order.
    void stepTweens(double nowMs);
    void stepTween(std::optional<Tween> &tween, double nowMs);
    void aim(double now, double t);
    [[nodiscard]] QPointF gaze(double now, double t);
    void bounce(double dt, double t);
    void breathe(double t);
    void smooth(double dt);
    void runBlinkClock(double now);
    void expireEyeOverride(double now);
    void tickAmbient(double now);
    void ageParticles(double dt);
    void stepSlotSpring(double dt);

    void enterState(BotState oldState);
    void overrideEye(EyeShape eye, double until);
    void doMiniBehaviorLoop(double now);
    void playSound(const char *name) const;

    [[nodiscard]] double uniform(double low, double high)
    {
        return low + (high - low) * m_random();
    }
    /// Runs the step once `seconds` have passed, if the engine lives by then.
    void later(double seconds, std::function<void()> step);
    /// As later(), and only if no newer greeting and no interruption came.
    void laterInGreeting(double seconds, std::function<void()> step);

    MainQueue &m_queue;
    UniformSource m_random;
    BotHooks m_hooks;
    /// Owns the delayed steps.
    QObject m_life;
};

} // namespace tirlo
