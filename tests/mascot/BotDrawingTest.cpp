#include "Canvas.h"
#include "EngineRig.h"
#include "mascot/BotEyes.h"

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <numbers>

using namespace tirlo;

namespace {

constexpr double rx = 1.14;
constexpr double ry = 0.88;

/// Whether there is ink where an eye of a soft body is.
bool hasEye(const BotEngine &bot, double side)
{
    const double latitude = bot.pitch - 0.12;
    const double longitude = bot.yaw + side * 0.37;
    return isInk(
        Canvas(bot).at(rx * std::sin(longitude) * std::cos(latitude), -ry * std::sin(latitude)));
}

int inkPixels(const BotEngine &bot)
{
    // On white, so that the soft edge of the body shows no dark pixels.
    const QImage image = Canvas(bot, Qt::white).image();
    return count(image, image.rect(), isInk);
}

TEST(BotDrawing, OutlineIsASuperellipseThatBecomesARoundedBox)
{
    // Where the diagonal leaves the superellipse of exponent 2.7.
    const double diagonal = std::pow(0.5, 1 / 2.7);
    for (const auto &[morph, x, y] :
         {std::array{0.0, rx, 0.0}, std::array{0.0, 0.0, -ry},
          std::array{0.0, rx * diagonal, -ry * diagonal}, std::array{1.0, -1.0, 0.0},
          std::array{1.0, 0.0, 0.94}, std::array{1.0, 0.877, 0.817}}) {
        const QPainterPath path = pebboPath(rx, ry, morph, 1);
        EXPECT_TRUE(path.contains(0.98 * QPointF(x, y))) << morph << ": " << x << ", " << y;
        EXPECT_FALSE(path.contains(1.02 * QPointF(x, y))) << morph << ": " << x << ", " << y;
    }
    EXPECT_NEAR(pebboPath(rx, ry, 0.5, 1).boundingRect().width(), rx + 1, 1e-6) << "half-way";
}

TEST(BotDrawing, GreyBodyIsLitFromAboveAndTintedFromBelow)
{
    EngineRig rig;
    const Canvas grey(*rig.bot);
    EXPECT_GT(grey.at(0.4, -0.4).lightness(), grey.at(-0.6, 0.6).lightness() + 15);
    EXPECT_LT(grey.at(0, 0.5).saturation(), 20);
    // The rim is darker than what lies a little further in.
    EXPECT_LT(grey.at(-1.1, 0).lightness(), grey.at(-0.75, 0).lightness() - 10);

    rig->tint = 0.72;
    rig->col = {0, 0, 1};
    const Canvas tinted(*rig.bot);
    EXPECT_GT(tinted.at(0, 0.8).hsvSaturation(), 1.5 * tinted.at(0, 0).hsvSaturation());
    EXPECT_LT(tinted.at(0, -0.8).hsvSaturation(), 30);

    rig->morph = 1;
    EXPECT_LT(Canvas(*rig.bot).at(0, 0.8).hsvSaturation(), 20) << "the box takes no tint";

    // A body of its own colour is flat, but has cheeks and eyes.
    rig->morph = 0;
    rig->bodyColor = cgColorFromHex(u"#4285F4");
    rig->blush = 1;
    const Canvas canvas(*rig.bot);
    const QColor flat(0x42, 0x85, 0xf4);
    for (const QPointF place :
         {QPointF(0, 0.8), QPointF(0, -0.8), QPointF(0.4, -0.4), QPointF(-1, 0)})
        EXPECT_EQ(canvas.at(place.x(), place.y()), flat);
    EXPECT_NE(canvas.at(-rx * 0.55, ry * 0.2), flat);
    EXPECT_TRUE(hasEye(*rig.bot, -1));
}

TEST(BotDrawing, EyesFollowTheHeadAndHideBehindIt)
{
    EngineRig rig;
    for (const QPointF turn : {QPointF(), QPointF(0.6, 0), QPointF(-0.6, 0.4), QPointF(0, -0.5)}) {
        rig->yaw = turn.x();
        rig->pitch = turn.y();
        EXPECT_TRUE(hasEye(*rig.bot, -1) && hasEye(*rig.bot, 1)) << turn.x() << ' ' << turn.y();
    }
    rig->pitch = 0;
    rig->yaw = 1.25;
    EXPECT_TRUE(hasEye(*rig.bot, -1));
    EXPECT_FALSE(hasEye(*rig.bot, 1));
    rig->yaw = 0;
    rig->roll = std::numbers::pi;
    EXPECT_EQ(inkPixels(*rig.bot), 0);
    rig->roll = 2 * std::numbers::pi;
    EXPECT_TRUE(hasEye(*rig.bot, 1)) << "round again";
}

TEST(BotDrawing, EyesBlinkAndSpinAsTheirShapesDo)
{
    for (const EyeShape eye : allCases<EyeShape>()) {
        EngineRig rig;
        rig->bodyColor = BotColor{1, 1, 1};
        rig->eyeOverride = eye;
        const int awake = inkPixels(*rig.bot);
        const QImage still = Canvas(*rig.bot).image();
        rig->lastTime += 0.1;
        const bool spins = eye == EyeShape::spiral || eye == EyeShape::star;
        EXPECT_EQ(Canvas(*rig.bot).image() != still, spins) << rawText(eye).toStdString();
        rig->open = 0;
        const int asleep = inkPixels(*rig.bot);
        const bool blinks = eye == EyeShape::pill || eye == EyeShape::wide || eye == EyeShape::cup
            || eye == EyeShape::wink;
        const bool inked = eye != EyeShape::heart && eye != EyeShape::star;
        // What spins covers more or less from one picture to the next.
        EXPECT_TRUE(spins || (asleep < awake) == blinks) << rawText(eye).toStdString();
        EXPECT_EQ(asleep > 20, inked) << rawText(eye).toStdString();
    }
}

TEST(BotDrawing, BoxPeersAtItsSlotAndChews)
{
    EngineRig rig;
    rig->morph = 1;
    EXPECT_EQ(eyeOnShow(*rig.bot), EyeShape::pill);
    rig->slotH = 0.2;
    EXPECT_EQ(eyeOnShow(*rig.bot), EyeShape::cup);
    EXPECT_LT(Canvas(*rig.bot).at(0, -0.76).lightness(), 30);
    EXPECT_GT(Canvas(*rig.bot).at(0, -0.61).lightness(), 150);
    rig->isChewing = true;
    EXPECT_EQ(eyeOnShow(*rig.bot), EyeShape::happy);
    rig->morph = 0.04;
    EXPECT_EQ(eyeOnShow(*rig.bot), EyeShape::pill);
    EXPECT_GT(Canvas(*rig.bot).at(0, -0.75).lightness(), 150) << "the soft body has no slot";
}

TEST(BotDrawing, HandsRestBesideTheBodyAndTheRightOneWaves)
{
    EngineRig rig;
    const auto handAt = [&](double x, double y) { return !isBlack(Canvas(*rig.bot).at(x, y)); };
    // The outer half of a hand at rest.
    const double x = rx * 1.08 + 0.15;
    const double y = ry * 0.7;
    EXPECT_FALSE(handAt(x, y));
    rig->hands = 1;
    EXPECT_TRUE(handAt(x, y) && handAt(-x, y));

    rig->waveStart = rig->lastTime - 0.2;
    rig->waveUntil = rig->lastTime + 1;
    EXPECT_TRUE(!handAt(x, y) && handAt(-x, y));
    EXPECT_TRUE(handAt(1.26, -0.26)) << "the right one is up";
    rig->isMini = true;
    EXPECT_FALSE(handAt(-x, y));
}

TEST(BotDrawing, BadgeSitsAtTheUpperLeftUntilTheBoxUnfolds)
{
    EngineRig rig;
    rig->badgeS = 1;
    const auto badgeAt = [&](BadgeType::Kind kind, double dx, double dy) {
        rig->badge = BadgeType{kind, {0, 1, 0}};
        return Canvas(*rig.bot).at(-0.72 + dx, -0.72 + dy);
    };
    using enum BadgeType::Kind;
    const QColor green(Qt::green);
    EXPECT_EQ(badgeAt(dot, 0, 0), green);
    EXPECT_TRUE(isBlack(badgeAt(dot, 0.165, 0))) << "a ring sets it off from the head";
    EXPECT_EQ(badgeAt(bang, 0, -0.04), QColor(Qt::white)) << "the sign";
    EXPECT_EQ(badgeAt(dots, 0.35, 0), green) << "a capsule";
    EXPECT_EQ(badgeAt(dots, 0, 0), QColor(Qt::white));
    rig->isMini = true;
    EXPECT_EQ(badgeAt(bang, 0, -0.04), green) << "a mini has no room for the sign";
    EXPECT_NE(badgeAt(dots, 0.35, 0), green);
    rig->isMini = false;
    rig->morph = 0.25;
    EXPECT_NE(badgeAt(dot, 0, 0), green);
}

TEST(BotDrawing, ParticlesRiseAndFade)
{
    EngineRig rig;
    rig->emitParticles(Particle::ParticleType::heart, 1);
    Particle &heart = rig->particles.front();
    heart.vy = -0.3;
    const auto redAfter = [&](double share) {
        heart.age = share * heart.life;
        return Canvas(*rig.bot).at(0, (heart.y + heart.vy * heart.age) * 1.3).red();
    };
    EXPECT_NEAR(redAfter(0.2), 255, 3);
    EXPECT_NEAR(redAfter(0.6), 255 * 0.5, 5);
    EXPECT_LT(redAfter(0.97), 12);
}

} // namespace
