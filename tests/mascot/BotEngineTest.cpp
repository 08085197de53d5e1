#include "EngineRig.h"

#include <gtest/gtest.h>

#include <cmath>
#include <numbers>

namespace tirlo {

namespace {

constexpr BadgeType redDot{BadgeType::Kind::dot, {1, 0, 0}};
constexpr BadgeType blueBang{BadgeType::Kind::bang, {0, 0, 1}};

} // namespace

TEST(BotEngine, BlinksComeInTheirTimeSomeDoubleAndNoneInSleep)
{
    for (const double chance : {0.0, 1.0}) {
        EngineRig rig(chance);
        EXPECT_NEAR(rig.timeUntil([&] { return rig->open < 1; }).value(), 1.5 + 2 * chance, 0.003);
        const double start = rig.now();
        double lowest = 1;
        rig.timeUntil([&] {
            lowest = std::min(lowest, rig->open);
            return !rig->isLocked(BotProperty::open);
        });
        EXPECT_NEAR(lowest, 0.06, 0.001);
        EXPECT_NEAR(rig.now() - start, 0.2, 0.004);
        EXPECT_EQ(rig->open, 1);
    }
    for (const auto &[chance, blinks] : {std::pair(0.21, 2), std::pair(0.23, 1)}) {
        EngineRig rig(chance);
        int starts = 0;
        bool wasLocked = false;
        const double last = rig->nextBlink + 1;
        while (rig.now() < last) {
            rig.frame();
            const bool locked = rig->isLocked(BotProperty::open);
            starts += locked && !wasLocked;
            wasLocked = locked;
        }
        EXPECT_EQ(starts, blinks) << chance;
    }
    for (const BotState state : {BotState::sleeping, BotState::dizzy}) {
        EngineRig rig;
        rig->setState(state, true);
        rig.play(0.5);
        const double firstBlink = rig->nextBlink;
        EXPECT_FALSE(rig.timeUntil([&] { return rig->open < 1; }));
        EXPECT_GT(rig->nextBlink, firstBlink + 2.2) << "but the clock goes on";
    }
}

TEST(BotEngine, TweenLocksItsPropertyUntilItsEnd)
{
    EngineRig rig;
    rig->lookX = 1;
    rig->startTween(BotProperty::yaw, {{-1, 100, linearEase}, {-0.5, 100, linearEase}});
    rig.play(0.05);
    EXPECT_NEAR(rig->yaw, -0.5, 0.01);
    rig.play(0.1);
    EXPECT_NEAR(rig->yaw, -0.75, 0.02);
    rig.play(0.06);
    EXPECT_FALSE(rig->isLocked(BotProperty::yaw));
    // The smoothing takes over where the tween left it.
    rig.play(0.1);
    EXPECT_NEAR(rig->yaw, 0.62, 0.001);

    rig->startTween(BotProperty::tint, {{0.2, 500, linearEase}});
    rig->setState(BotState::working, false);
    EXPECT_EQ(rig->tint, 0) << "a state leaves a locked tint to its tween";

    // One that is replaced goes on from there and never completes.
    rig->doRoll(1000, 1);
    rig.play(0.5);
    EXPECT_NEAR(rig->roll, std::numbers::pi, 0.02);
    rig->startTween(BotProperty::roll, {{4, 100, linearEase}});
    rig.play(0.2);
    EXPECT_EQ(rig->roll, 4);
    rig->doRoll(1000, 2);
    EXPECT_EQ(rig->roll, 0);
    rig.play(1.1);
    EXPECT_EQ(rig->roll, 0);
    EXPECT_FALSE(rig->isLocked(BotProperty::roll));

    // One of no length at all is passed in a frame, a hold of negative length never ends.
    rig->startTween(BotProperty::ox, {{1, 0, linearEase}});
    rig->update(BotEngine::frameStep);
    EXPECT_EQ(rig->ox, 0);
    rig.frame();
    EXPECT_EQ(rig->ox, 1);
    rig->triggerEmote(BotEmote::love, 0.3);
    rig.play(9);
    EXPECT_EQ(rig->blush, 1);
    EXPECT_TRUE(rig->isLocked(BotProperty::blush));
}

TEST(BotEngine, SmoothingGoesItsShareEachFrame)
{
    EngineRig rig;
    rig->lookX = 1;
    rig->tgEs = 2;
    rig->colT = {0, 0, 0};
    rig->col = {1, 1, 1};
    rig.frame();
    EXPECT_NEAR(rig->yaw, 0.62 * 0.259, 0.0005);
    EXPECT_NEAR(rig->es, 1.300, 0.0005);
    EXPECT_NEAR(rig->col[1], 1 - 0.267, 0.0005);
}

TEST(BotEngine, GazeFollowsThePointerAsTheStateAllows)
{
    const auto gazeIn = [](BotState state) {
        EngineRig rig;
        rig->setState(state, true);
        rig->lookX = 1;
        rig->lookY = -1;
        rig.frame();
        return std::pair(QPointF(rig->tgYaw, rig->tgPitch), rig.now() - rig->t0);
    };
    EXPECT_EQ(gazeIn(BotState::idle).first, QPointF(0.62, -0.5));
    EXPECT_EQ(gazeIn(BotState::thinking).first,
              QPointF(0.62 * 0.35 + 0.55 * 0.55, -0.5 * 0.3 + 0.55 * 0.5));
    EXPECT_EQ(gazeIn(BotState::sleeping).first, QPointF(0, -0.14));
    const auto [scan, scanTime] = gazeIn(BotState::searching);
    EXPECT_EQ(scan, QPointF(0.6 * std::sin(2.6 * scanTime), -0.06));
    const auto [reel, reelTime] = gazeIn(BotState::dizzy);
    EXPECT_EQ(reel, QPointF(0.25 * std::sin(9 * reelTime), -0.5));

    // A mini picks its own and keeps it for a while.
    EngineRig rig(0);
    rig->isMini = true;
    rig->lookX = 1;
    rig.frame();
    EXPECT_EQ(QPointF(rig->tgYaw, rig->tgPitch), QPointF(-0.88 * 0.62, -0.55 * 0.5));
    rig.chance = 1;
    rig.play(0.49);
    EXPECT_LT(rig->tgYaw, 0);
    rig.play(0.02);
    EXPECT_EQ(QPointF(rig->tgYaw, rig->tgPitch), QPointF(0.88 * 0.62, 0.45 * 0.5));
}

TEST(BotEngine, StatesEnterWithTheirOwnMove)
{
    using P = BotProperty;
    const std::vector<std::pair<BotState, P>> moves{
        {BotState::working, P::open},   {BotState::thinking, P::open},
        {BotState::searching, P::open}, {BotState::approval, P::oy},
        {BotState::question, P::open},  {BotState::error, P::ox},
        {BotState::finished, P::roll},  {BotState::sleeping, P::open},
        {BotState::dizzy, P::roll},
    };
    for (const auto &[state, property] : moves) {
        EngineRig rig;
        rig->setState(state, false);
        EXPECT_TRUE(rig->isLocked(property)) << rawText(state).toStdString();
        EXPECT_EQ(rig->tint, BotStates::row(state).tint);
        rig.play(0.5);
        rig->setState(BotState::idle, false);
        EXPECT_TRUE(rig->isLocked(P::open)) << "back from " << rawText(state).toStdString();
    }

    EngineRig rig;
    rig->setState(BotState::ratelimit, false);
    EXPECT_FALSE(rig->isLocked(P::open));
    EXPECT_EQ(rig->particles.size(), 1u);
}

TEST(BotEngine, BadgeShrinksAwayAndTheNewOnePopsIn)
{
    EngineRig rig;
    rig->setBadge(redDot);
    rig.play(0.099);
    EXPECT_FALSE(rig->badge);
    rig.play(0.4);
    EXPECT_EQ(rig->badge, redDot);
    EXPECT_EQ(rig->badgeS, 1);

    rig->setBadge(redDot);
    EXPECT_FALSE(rig->isLocked(BotProperty::badgeS)) << "the same badge does not blink";

    rig->setBadge(std::nullopt);
    rig.play(0.095);
    EXPECT_EQ(rig->badge, redDot);
    EXPECT_LT(rig->badgeS, 0.01);
    rig.play(0.1);
    EXPECT_FALSE(rig->badge);

    rig->setBadge(redDot);
    rig.play(0.06);
    rig->setBadge(blueBang);
    rig.play(0.06);
    EXPECT_FALSE(rig->badge) << "of two within a tenth of a second the first is stale";
    rig.play(0.06);
    EXPECT_EQ(rig->badge, blueBang);
}

TEST(BotEngine, EyeOverrideFallsBackToThePermanentEye)
{
    EngineRig rig;
    rig->setPermanentEmote(BotEmote::proud);
    EXPECT_EQ(rig->shownEye(), EyeShape::star);
    rig->triggerEmote(BotEmote::annoyed, 1.8);
    EXPECT_EQ(rig->shownEye(), EyeShape::line);
    rig.play(0.81);
    EXPECT_EQ(rig->shownEye(), EyeShape::star);
    EXPECT_EQ(rig->eyeOverrideUntil, BotEngine::forever);

    rig->setPermanentEmote(std::nullopt);
    EXPECT_EQ(rig->shownEye(), EyeShape::pill);

    // A passing override outlives the permanent eye.
    rig->setPermanentEmote(BotEmote::love);
    rig->triggerEmote(BotEmote::happy, 1);
    rig->setPermanentEmote(std::nullopt);
    EXPECT_EQ(rig->shownEye(), EyeShape::happy);
    rig.play(1.01);
    EXPECT_EQ(rig->eyeOverride, std::nullopt);
}

TEST(BotEngine, SlotSpringIsExactInShortStepsAndSteadyInLongOnes)
{
    EngineRig rig;
    rig->slotHTarget = 0.2;
    rig.queue.advance(0.01);
    rig->update(0.01);
    EXPECT_NEAR(rig->slotHVel, 0.01 * 0.2 * 631.6546816697189, 1e-12);
    EXPECT_NEAR(rig->slotH, 0.01 * rig->slotHVel, 1e-12);

    for (int i = 0; i < 200; ++i) {
        rig.frame();
        EXPECT_LT(rig->slotH, 0.25);
    }
    EXPECT_NEAR(rig->slotH, 0.2, 1e-6);

    rig->slotHTarget = 0;
    for (int i = 0; i < 200; ++i) {
        rig.frame();
        EXPECT_GE(rig->slotH, 0);
    }
    EXPECT_NEAR(rig->slotH, 0, 1e-6);
}

TEST(BotEngine, SnoresAndSweatsAtItsTick)
{
    const auto bornIn = [](BotState state, double chance, bool mini) {
        EngineRig rig(chance);
        rig->isMini = mini;
        rig->setState(state, true);
        rig->particles.clear();
        int born = 0;
        for (int i = 0; i < 4000; ++i) {
            rig.frame();
            born += !rig->particles.empty() && rig->particles.back().age == BotEngine::frameStep;
        }
        return born;
    };
    EXPECT_EQ(bornIn(BotState::sleeping, 0.9, false), 4);
    EXPECT_EQ(bornIn(BotState::sleeping, 0.9, true), 4);
    EXPECT_EQ(bornIn(BotState::ratelimit, 0.4, false), 4);
    EXPECT_EQ(bornIn(BotState::ratelimit, 0.6, false), 0);
    EXPECT_EQ(bornIn(BotState::ratelimit, 0.4, true), 0);
}

TEST(BotEngine, ParticlesOfABurstAreBornApartAndDieInOrder)
{
    EngineRig rig(0);
    rig->emitParticles(Particle::ParticleType::z, 3);
    const std::vector<Particle> &particles = rig->particles;
    EXPECT_NEAR(particles[2].age, -0.28, 1e-9);
    EXPECT_NEAR(particles[0].x, -0.45 + 0.55, 1e-9);
    EXPECT_NEAR(particles[0].vx, -0.175 + 0.18, 1e-9);

    for (int i = 0; i < 27; ++i)
        rig.frame();
    ASSERT_EQ(particles.size(), 2u);
    EXPECT_LT(particles[1].age, particles[0].age);
    for (int i = 0; i < 6; ++i)
        rig.frame();
    EXPECT_TRUE(particles.empty());
}

} // namespace tirlo
