#include "EngineRig.h"

#include <gtest/gtest.h>

#include <cmath>
#include <numbers>
#include <tuple>

using namespace tirlo;

namespace {

using P = BotProperty;

TEST(BotEngine, BlinksComeInTheirTimeSomeDoubleAndNoneInSleep)
{
    for (const double chance : {0.0, 1.0}) {
        EngineRig rig(chance);
        EXPECT_NEAR(rig.timeUntil([&] { return rig->open < 1; }).value(), 1.5 + 2 * chance, 0.003);
        double lowest = 1;
        const auto blink = rig.timeUntil([&] {
            lowest = std::min(lowest, rig->open);
            return !rig->isLocked(P::open);
        });
        EXPECT_NEAR(lowest, 0.06, 0.001);
        EXPECT_NEAR(blink.value(), 0.2, 0.004);
    }
    for (const double chance : {0.21, 0.23}) {
        EngineRig rig(chance);
        rig.timeUntil([&] { return rig->open < 1; });
        rig.play(0.215);
        EXPECT_FALSE(rig->isLocked(P::open));
        rig.play(0.03);
        EXPECT_EQ(rig->isLocked(P::open), chance < 0.22) << chance;
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

TEST(BotEngine, TweenLocksItsPropertyThatElseGoesItsShareEachFrame)
{
    EngineRig rig;
    rig->lookX = 1;
    rig->tgEs = 2;
    rig->colT = {0, 0, 0};
    rig->col = {1, 1, 1};
    rig->startTween(P::yaw, {{-1, 100, linearEase}, {-0.5, 100, linearEase}});
    rig.frame();
    EXPECT_NEAR(rig->es, 1.300, 0.0005);
    EXPECT_NEAR(rig->col[1], 1 - 0.267, 0.0005);
    rig.play(0.049);
    EXPECT_NEAR(rig->yaw, -0.5, 0.01);
    rig.play(0.1);
    EXPECT_NEAR(rig->yaw, -0.75, 0.02);
    // The smoothing takes over where the tween left it.
    rig.timeUntil([&] { return !rig->isLocked(P::yaw); });
    EXPECT_NEAR(rig->yaw, -0.5 + 1.12 * 0.259, 0.0005);

    rig->startTween(P::tint, {{0.2, 500, linearEase}});
    rig->setState(BotState::working, false);
    EXPECT_EQ(rig->tint, 0) << "a state leaves a locked tint to its tween";

    // One that is replaced goes on from there and never completes.
    rig->doRoll(1000, 1);
    rig.play(0.5);
    EXPECT_NEAR(rig->roll, std::numbers::pi, 0.02);
    rig->startTween(P::roll, {{4, 100, linearEase}});
    rig.play(0.2);
    EXPECT_EQ(rig->roll, 4);
    rig->doRoll(1000, 2);
    rig.play(1.1);
    EXPECT_EQ(rig->roll, 0);

    // One of no length at all is passed in a frame, a hold of negative length never ends.
    rig->startTween(P::ox, {{1, 0, linearEase}});
    rig->update(BotEngine::frameStep);
    EXPECT_EQ(rig->ox, 0);
    rig.frame();
    EXPECT_EQ(rig->ox, 1);
    rig->triggerEmote(BotEmote::love, 0.3);
    rig.play(9);
    EXPECT_EQ(rig->blush, 1);
}

TEST(BotEngine, GazeFollowsThePointerAsTheStateAllows)
{
    // The clock of its phases began 2.5 s ago.
    constexpr double t = 2.501;
    for (const auto &[state, gaze] :
         {std::pair(BotState::idle, QPointF(0.62, -0.5)),
          std::pair(BotState::thinking, QPointF(0.5195, 0.125)),
          std::pair(BotState::sleeping, QPointF(0, -0.14)),
          std::pair(BotState::searching, QPointF(0.6 * std::sin(2.6 * t), -0.06)),
          std::pair(BotState::dizzy, QPointF(0.25 * std::sin(9 * t), -0.5))}) {
        EngineRig rig;
        rig->setState(state, true);
        rig->lookX = 1;
        rig->lookY = -1;
        rig.frame();
        EXPECT_NEAR(rig->tgYaw, gaze.x(), 1e-9) << rawText(state).toStdString();
        EXPECT_NEAR(rig->tgPitch, gaze.y(), 1e-9) << rawText(state).toStdString();
    }

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
    using enum BotState;
    for (const auto &[state, move] :
         {std::pair(working, P::open), std::pair(searching, P::open), std::pair(approval, P::oy),
          std::pair(question, P::open), std::pair(error, P::ox), std::pair(finished, P::roll),
          std::pair(sleeping, P::open), std::pair(dizzy, P::roll)}) {
        EngineRig rig;
        rig->setState(state, false);
        EXPECT_TRUE(rig->isLocked(move)) << rawText(state).toStdString();
        rig.play(0.5);
        rig->setState(idle, false);
        EXPECT_TRUE(rig->isLocked(P::open)) << "back from " << rawText(state).toStdString();
    }
    EngineRig rig;
    rig->setState(ratelimit, false);
    EXPECT_EQ(rig->particles.size(), 1u);
}

TEST(BotEngine, BadgeShrinksAwayAndTheNewOnePopsIn)
{
    constexpr BadgeType redDot{BadgeType::Kind::dot, {1, 0, 0}};
    constexpr BadgeType blueBang{BadgeType::Kind::bang, {0, 0, 1}};
    EngineRig rig;
    rig->setBadge(redDot);
    rig.play(0.5);
    EXPECT_EQ(rig->badge, redDot);
    EXPECT_EQ(rig->badgeS, 1);

    rig->setBadge(redDot);
    EXPECT_FALSE(rig->isLocked(P::badgeS)) << "the same badge does not blink";

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
    rig->triggerEmote(BotEmote::annoyed, 1.8);
    EXPECT_EQ(rig->shownEye(), EyeShape::line);
    rig.play(0.81);
    EXPECT_EQ(rig->shownEye(), EyeShape::star);
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

TEST(BotEngine, SlotSpringIsSteadyThoughItsStepsAreLong)
{
    EngineRig rig;
    for (const double target : {0.2, 0.0}) {
        rig->slotHTarget = target;
        for (int i = 0; i < 200; ++i) {
            rig.frame();
            EXPECT_LT(rig->slotH, 0.25);
            EXPECT_GE(rig->slotH, 0);
        }
        EXPECT_NEAR(rig->slotH, target, 1e-6);
    }
}

TEST(BotEngine, SnoresAndSweatsAtItsTickAndBurstsAreBornApart)
{
    using enum BotState;
    for (const auto &[state, chance, mini, births] :
         {std::tuple(sleeping, 0.9, false, 4), std::tuple(sleeping, 0.9, true, 4),
          std::tuple(ratelimit, 0.4, false, 4), std::tuple(ratelimit, 0.6, false, 0),
          std::tuple(ratelimit, 0.4, true, 0)}) {
        EngineRig rig(chance);
        rig->isMini = mini;
        rig->setState(state, true);
        rig->particles.clear();
        int born = 0;
        for (int i = 0; i < 4000; ++i) {
            rig.frame();
            born += !rig->particles.empty() && rig->particles.back().age == BotEngine::frameStep;
        }
        EXPECT_EQ(born, births) << rawText(state).toStdString() << ' ' << chance << ' ' << mini;
    }

    EngineRig rig(0);
    rig->emitParticles(Particle::ParticleType::z, 3);
    EXPECT_GT(rig->particles[0].x, 0) << "a snore leaves aside";
    rig.play(0.027);
    ASSERT_EQ(rig->particles.size(), 2u);
    EXPECT_NEAR(rig->particles[0].age - rig->particles[1].age, 0.14, 1e-9);
    rig.play(0.006);
    EXPECT_TRUE(rig->particles.empty());
}

} // namespace
