#include "EngineRig.h"

#include <gtest/gtest.h>

#include <set>
#include <tuple>

using namespace tirlo;

namespace {

using P = BotProperty;
using enum BotState;

TEST(BotEngine, BlinksComeInTheirTimeAndNoneInSleep)
{
    for (const double chance : {0.0, 1.0}) {
        EngineRig rig(chance);
        EXPECT_NEAR(rig.timeUntil([&] { return rig->open < 1; }).value(), 1.5 + 2 * chance, 0.003);
        EXPECT_NEAR(rig.timeUntil([&] { return !rig->isLocked(P::open); }).value(), 0.2, 0.004);
    }
    for (const BotState state : {sleeping, dizzy}) {
        EngineRig rig;
        rig->setState(state, true);
        rig.play(0.5);
        EXPECT_FALSE(rig.timeUntil([&] { return rig->open < 1; }));
    }
}

TEST(BotEngine, TweenLocksItsPropertyUntilItEndsOrIsReplaced)
{
    EngineRig rig;
    rig->startTween(P::tint, {{0.2, 500, linearEase}});
    rig->setState(working, false);
    EXPECT_EQ(rig->tint, 0) << "a state leaves a locked tint to its tween";

    // One that is replaced never completes.
    rig->doRoll(1000, 1);
    rig.play(0.5);
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
    for (const BotState state : {idle, working, thinking, searching, sleeping}) {
        EngineRig left, right;
        left->lookX = -1;
        right->lookX = 1;
        for (EngineRig *rig : {&left, &right}) {
            (*rig)->setState(state, true);
            rig->frame();
        }
        EXPECT_EQ(left->tgYaw + 1 < right->tgYaw, state == idle || state == working)
            << rawText(state).toStdString();
    }
}

TEST(BotEngine, BadgeShrinksAwayAndTheNewOnePopsIn)
{
    constexpr BadgeType redDot{BadgeType::Kind::dot, {1, 0, 0}};
    constexpr BadgeType blueBang{BadgeType::Kind::bang, {0, 0, 1}};
    EngineRig rig;
    rig->setBadge(redDot);
    rig.play(0.5);
    EXPECT_EQ(rig->badge, redDot);
    rig->setBadge(redDot);
    EXPECT_FALSE(rig->isLocked(P::badgeS)) << "the same badge does not blink";
    rig->setBadge(std::nullopt);
    rig.play(0.2);
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

TEST(BotEngine, EveryEmoteHasEyesOfItsOwnAndEndsInItsTime)
{
    std::set<EyeShape> eyes;
    for (const BotEmote emote : allCases<BotEmote>()) {
        SCOPED_TRACE(rawText(emote).toStdString());
        EngineRig rig(1);
        rig->triggerEmote(emote, 1.8);
        EXPECT_TRUE(eyes.insert(rig->shownEye()).second);
        const bool brief = emote == BotEmote::annoyed;
        const auto end = rig.timeUntil([&] { return !rig->eyeOverride; });
        EXPECT_NEAR(end.value(), brief ? 0.8 : 1.8, 0.003);
        rig->nextBlink = rig.now() + 9;
        rig.play(0.3);
        EXPECT_TRUE(rig->tweens.isEmpty());
        EXPECT_EQ(rig.sounds, brief ? QStringList{"annoyed"} : QStringList{});
    }
}

TEST(BotEngine, ThreeSlapsWithinTheMemoryMakeItDizzyOnce)
{
    for (const auto &[gap, spells] : {std::pair(1.69, 0), {0.86, 0}, {0.84, 1}}) {
        EngineRig rig;
        for (int i = 0; i < 3; ++i) {
            rig->slap();
            rig.queue.advance(gap);
        }
        EXPECT_EQ(rig.dizzySpells, spells) << gap;
        if (spells == 0)
            continue;
        EXPECT_EQ(rig.sounds, (QStringList{"slap", "annoyed", "slap", "annoyed", "slap"}))
            << "the last one is not met with a frown";
        rig->slap();
        EXPECT_EQ(rig.dizzySpells, 1) << "the count starts afresh";
        rig->setState(BotState::dizzy, false);
        rig.sounds.clear();
        for (int i = 0; i < 5; ++i)
            rig->slap();
        EXPECT_EQ(rig.dizzySpells, 1);
        EXPECT_TRUE(rig.sounds.isEmpty());
    }
}

TEST(BotEngine, AGreetingWavesAndSmilesUnlessASlapEndsItAtOnce)
{
    for (const bool slapped : {false, true}) {
        EngineRig rig(1);
        rig->greet();
        rig.play(1.2);
        EXPECT_EQ(rig->hands, 1);
        EXPECT_EQ(rig.sounds, QStringList{"greet"});
        EXPECT_NE(rig->tgTilt, 0) << "it sways";
        if (slapped) {
            rig->slap();
            EXPECT_EQ(rig->shownEye(), EyeShape::line);
            EXPECT_EQ(rig->waveUntil, 0);
        }
        rig.play(slapped ? 0.16 : 0.6);
        EXPECT_EQ(rig->hands, 0);
        for (int i = 0; i < 700; ++i) {
            rig.frame();
            EXPECT_FALSE(rig->isLocked(P::open)) << "a pending blink of the wave is dead";
            EXPECT_FALSE(slapped && rig->eyeOverride == EyeShape::happy);
        }
        EXPECT_EQ(rig->shownEye(), EyeShape::pill);
    }
}

TEST(BotEngine, DelayedStepsDieWithTheEngine)
{
    EngineRig rig;
    rig->greet();
    rig->gulp();
    rig->slap();
    rig->setState(BotState::finished, false);
    rig->triggerEmote(BotEmote::yawn, 1.8);
    rig.bot.reset();
    rig.queue.advance(5);
    EXPECT_EQ(rig.sounds, QStringList{"slap"});
}

} // namespace
