#include "EngineRig.h"

#include <gtest/gtest.h>

#include <tuple>

using namespace tirlo;

namespace {

using P = BotProperty;
using Type = Particle::ParticleType;

TEST(BotSequences, EveryEmotePlaysItsWholeRow)
{
    using Row = std::tuple<BotEmote, EyeShape, std::vector<P>, std::optional<Type>, int, P, double,
                           double>;
    // The last three: one property somewhere in the middle of its way.
    const std::vector<Row> rows{
        {BotEmote::love, EyeShape::heart, {P::blush, P::oy}, Type::heart, 4, P::blush, 1.4, 1},
        {BotEmote::surprised, EyeShape::dot, {P::oy, P::es}, {}, 0, P::oy, 0.14, -0.3},
        {BotEmote::proud, EyeShape::star, {P::tilt, P::blush}, Type::star, 5, P::tilt, 1.5, -0.14},
        {BotEmote::wink, EyeShape::wink, {P::tilt}, {}, 0, P::tilt, 1.5, 0.12},
        {BotEmote::yawn, EyeShape::tired, {P::sy, P::sx}, {}, 0, P::sy, 0.5, 1.12},
        {BotEmote::happy, EyeShape::happy, {P::blush}, {}, 0, P::blush, 0.2, 0.6},
        {BotEmote::annoyed, EyeShape::line, {}, {}, 0, P::es, 0.2, 1},
    };
    for (const auto &[emote, eye, moved, particle, count, probe, time, value] : rows) {
        SCOPED_TRACE(rawText(emote).toStdString());
        EngineRig rig(1);
        rig->triggerEmote(emote, 1.8);
        EXPECT_EQ(rig->shownEye(), eye);
        for (std::size_t i = 0; i < botPropertyCount; ++i)
            EXPECT_EQ(rig->isLocked(P(i)), std::ranges::count(moved, P(i)) > 0) << i;
        EXPECT_EQ(std::ranges::count(rig->particles, particle, &Particle::type), count);
        EXPECT_EQ(int(rig->particles.size()), count);

        const double start = rig.now();
        rig.play(time);
        EXPECT_NEAR(rig->getProperty(probe), value, 0.005);
        const bool brief = emote == BotEmote::annoyed;
        rig.timeUntil([&] { return !rig->eyeOverride; });
        EXPECT_NEAR(rig.now() - start, brief ? 0.8 : 1.8, 0.003);
        rig.play(0.1);
        for (const P property : moved)
            EXPECT_FALSE(rig->isLocked(property)) << int(property);
        EXPECT_EQ(rig.sounds, brief ? QStringList{"annoyed"} : QStringList{});
    }
}

TEST(BotSequences, YawnEndsWithClosedEyesForTheRestOfItsTime)
{
    EngineRig rig;
    rig->triggerEmote(BotEmote::yawn, 1.8);
    const auto tired = rig.timeUntil([&] { return rig->shownEye() == EyeShape::closed; });
    EXPECT_NEAR(tired.value(), 0.7, 0.002);
    EXPECT_EQ(rig->particles.size(), 2u);

    EngineRig shorter;
    shorter->triggerEmote(BotEmote::yawn, 0.5);
    shorter.play(0.75);
    EXPECT_EQ(shorter->shownEye(), EyeShape::pill) << "one that is over by then leaves them open";
}

TEST(BotSequences, ThreeSlapsWithinTheMemoryMakeItDizzyOnce)
{
    EngineRig rig;
    rig->slap();
    EXPECT_EQ(rig->shownEye(), EyeShape::line);
    EXPECT_TRUE(rig->isLocked(P::sy));
    rig.queue.advance(0.8);
    rig->slap();
    rig.queue.advance(0.8);
    rig->slap();
    rig.queue.advance(0.1);
    EXPECT_EQ(rig.dizzySpells, 1);
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

    for (const auto &[gap, spells] : {std::pair(1.69, 0), std::pair(0.86, 0), std::pair(0.84, 1)}) {
        EngineRig slapped;
        for (int i = 0; i < 3; ++i) {
            slapped->slap();
            slapped.queue.advance(gap);
        }
        EXPECT_EQ(slapped.dizzySpells, spells) << gap;
    }
}

TEST(BotSequences, GreetingWavesAndFoldsTheHands)
{
    EngineRig rig(1);
    const auto playTo
        = [&rig, start = rig.now()](double moment) { rig.play(start + moment - rig.now()); };
    rig->greet();
    EXPECT_EQ(rig->shownEye(), EyeShape::happy);
    playTo(0.24);
    EXPECT_FALSE(rig->isLocked(P::hands));
    playTo(0.54);
    EXPECT_EQ(rig->hands, 1);
    EXPECT_EQ(rig.sounds, QStringList{"greet"});
    EXPECT_FALSE(rig->isLocked(P::open));
    for (const double blink : {0.56, 1.51}) {
        playTo(blink);
        EXPECT_TRUE(rig->isLocked(P::open)) << blink;
        EXPECT_NE(rig->tgTilt, 0) << "it sways";
    }
    playTo(1.57);
    EXPECT_EQ(rig->tgTilt, 0);
    playTo(1.8);
    EXPECT_EQ(rig->hands, 0);
    playTo(2.04);
    EXPECT_EQ(rig->shownEye(), EyeShape::happy) << "the late smile is a little longer";
    playTo(2.07);
    EXPECT_EQ(rig->shownEye(), EyeShape::pill);
}

TEST(BotSequences, SlapEndsAGreetingAtOnce)
{
    EngineRig rig(1);
    rig->greet();
    rig.play(1.2);
    rig->slap();
    EXPECT_EQ(rig->shownEye(), EyeShape::line);
    EXPECT_EQ(rig->waveUntil, 0);
    rig.play(0.16);
    EXPECT_EQ(rig->hands, 0);
    for (int i = 0; i < 700; ++i) {
        rig.frame();
        EXPECT_FALSE(rig->isLocked(P::open)) << "the pending blink is dead";
        EXPECT_NE(rig->eyeOverride, EyeShape::happy);
    }
}

TEST(BotSequences, GulpOpensTheSlotAndChews)
{
    EngineRig rig(1);
    rig->gulp();
    EXPECT_EQ(rig->slotHTarget, 0.42);
    EXPECT_TRUE(rig->isLocked(P::open));
    EXPECT_NEAR(rig.timeUntil([&] { return rig->isChewing; }).value(), 0.46, 0.002);
    EXPECT_EQ(rig->slotHTarget, 0);
    EXPECT_NEAR(rig.timeUntil([&] { return !rig->isChewing; }).value(), 0.8, 0.002);
    EXPECT_EQ(rig->sx, 1);
}

TEST(BotSequences, MiniRepeatsItsStandingEmote)
{
    using Row = std::tuple<BotEmote, std::optional<P>, double, double, std::size_t>;
    for (const double chance : {0.0, 1.0}) {
        for (const auto &[emote, moved, rest, spread, hearts] :
             {Row{BotEmote::love, P::tilt, 2.6, 1.5, 2}, Row{BotEmote::wink, P::tilt, 2.2, 2, 0},
              Row{BotEmote::happy, P::oy, 2.2, 1.2, 0}, Row{BotEmote::annoyed, P::yaw, 3, 2.5, 0},
              Row{BotEmote::surprised, {}, 3, 2, 0}}) {
            SCOPED_TRACE(rawText(emote).toStdString());
            EngineRig rig(chance);
            rig->isMini = true;
            rig->setPermanentEmote(emote);
            const double first = rig->miniNextBehavior;
            EXPECT_NEAR(first - rig.now(), 0.8 + 1.7 * chance, 1e-9);
            rig.timeUntil([&] { return rig->miniNextBehavior > first; });
            EXPECT_NEAR(rig->miniNextBehavior - rig.now(), rest + spread * chance, 1e-9);
            EXPECT_EQ(rig->particles.size(), hearts);
            for (const P property : {P::tilt, P::oy, P::yaw})
                EXPECT_EQ(rig->isLocked(property), property == moved) << int(property);
            if (emote != BotEmote::wink)
                continue;
            EXPECT_EQ(rig->shownEye(), EyeShape::wink);
            const auto winked = rig.timeUntil([&] { return rig->shownEye() == EyeShape::pill; });
            EXPECT_NEAR(winked.value(), 0.55, 0.003);
        }
    }
}

TEST(BotSequences, DelayedStepsDieWithTheEngine)
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
