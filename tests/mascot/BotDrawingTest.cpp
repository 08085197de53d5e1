#include "Canvas.h"
#include "EngineRig.h"
#include "mascot/BotEyes.h"

#include <gtest/gtest.h>

#include <cmath>
#include <numbers>

namespace tirlo {

namespace {

constexpr double R = Canvas::R;
constexpr double rx = 1.14;
constexpr double ry = 0.88;

/// Where an eye of a soft body is, in body radii.
QPointF eyePlace(const BotEngine &bot, double side)
{
    const double latitude = bot.pitch - 0.12;
    const double longitude = bot.yaw + side * 0.37;
    return {rx * std::sin(longitude) * std::cos(latitude), -ry * std::sin(latitude)};
}

QColor eyeColor(const BotEngine &bot, double side)
{
    const QPointF place = eyePlace(bot, side);
    return Canvas(bot).at(place.x(), place.y());
}

int inkPixels(const BotEngine &bot)
{
    // On white, so that the soft edge of the body shows no dark pixels.
    return Canvas(bot, Qt::white).count(isInk);
}

void showEye(BotEngine &bot, EyeShape eye)
{
    bot.eyeOverride = eye;
    bot.eyeOverrideUntil = BotEngine::forever;
}

} // namespace

TEST(BotDrawing, OutlineIsASuperellipseThatBecomesARoundedBox)
{
    const auto contains = [](double morph, double x, double y) {
        return pebboPath(rx * R, ry * R, morph, R).contains(QPointF(x * R, y * R));
    };
    // Where the diagonal leaves the superellipse of exponent 2.7.
    const double diagonal = std::pow(0.5, 1 / 2.7);
    for (const double scale : {0.98, 1.02}) {
        const bool inside = scale < 1;
        EXPECT_EQ(contains(0, rx * scale, 0), inside);
        EXPECT_EQ(contains(0, 0, -ry * scale), inside);
        EXPECT_EQ(contains(0, rx * diagonal * scale, -ry * diagonal * scale), inside);
        EXPECT_EQ(contains(1, -scale, 0), inside);
        EXPECT_EQ(contains(1, 0, 0.94 * scale), inside);
        EXPECT_EQ(contains(1, 0.877 * scale, 0.817 * scale), inside) << "the corner's arc";
    }
    EXPECT_FALSE(contains(1, 0.97, 0.91)) << "the corner is round";
    EXPECT_EQ(pebboPath(rx, ry, 0.004, 1), pebboPath(rx, ry, 0, 1));

    const QRectF half = pebboPath(rx, ry, 0.5, 1).boundingRect();
    EXPECT_NEAR(half.width(), rx + 1, 1e-6);
    EXPECT_NEAR(half.height(), ry + 0.94, 1e-6);
}

TEST(BotDrawing, GreyBodyIsLitFromAboveAndTintedFromBelow)
{
    EngineRig rig;
    const Canvas grey(*rig.bot);
    EXPECT_GT(grey.at(0.4, -0.4).lightness(), grey.at(-0.6, 0.6).lightness() + 15);
    EXPECT_LT(grey.at(0, 0.5).saturation(), 20);
    EXPECT_TRUE(isBlack(grey.at(0, -0.92)));
    EXPECT_TRUE(isBlack(grey.at(1.17, 0)));
    // The rim is darker than what lies a little further in.
    EXPECT_LT(grey.at(-1.1, 0).lightness(), grey.at(-0.75, 0).lightness() - 10);

    rig->tint = 0.72;
    rig->col = {0, 0, 1};
    const Canvas tinted(*rig.bot);
    EXPECT_GT(tinted.at(0, 0.8).hsvSaturation(), 1.5 * tinted.at(0, 0).hsvSaturation());
    EXPECT_LT(tinted.at(0, -0.8).hsvSaturation(), 30);

    rig->morph = 1;
    EXPECT_LT(Canvas(*rig.bot).at(0, 0.8).hsvSaturation(), 20) << "the box takes no tint";
    rig->morph = 0;

    // A body of its own colour is flat, but has cheeks and eyes.
    rig->bodyColor = cgColorFromHex(u"#4285F4");
    rig->tint = 0.72;
    rig->blush = 1;
    const Canvas canvas(*rig.bot);
    const QColor flat(0x42, 0x85, 0xf4);
    for (const QPointF place :
         {QPointF(0, 0.8), QPointF(0, -0.8), QPointF(0.4, -0.4), QPointF(-1, 0)})
        EXPECT_EQ(canvas.at(place.x(), place.y()), flat);
    EXPECT_NE(canvas.at(-rx * 0.55, ry * 0.2), flat);
    EXPECT_TRUE(isInk(eyeColor(*rig.bot, -1)));
}

TEST(BotDrawing, EyesFollowTheHeadAndHideBehindIt)
{
    EngineRig rig;
    for (const QPointF turn : {QPointF(), QPointF(0.6, 0), QPointF(-0.6, 0.4), QPointF(0, -0.5)}) {
        rig->yaw = turn.x();
        rig->pitch = turn.y();
        EXPECT_TRUE(isInk(eyeColor(*rig.bot, -1))) << turn.x() << ' ' << turn.y();
        EXPECT_TRUE(isInk(eyeColor(*rig.bot, 1))) << turn.x() << ' ' << turn.y();
    }
    rig->pitch = 0;
    rig->yaw = 1.25;
    EXPECT_TRUE(isInk(eyeColor(*rig.bot, -1)));
    EXPECT_FALSE(isInk(eyeColor(*rig.bot, 1)));
    rig->yaw = 0;
    rig->roll = std::numbers::pi;
    EXPECT_EQ(inkPixels(*rig.bot), 0);
    rig->roll = 2 * std::numbers::pi;
    EXPECT_TRUE(isInk(eyeColor(*rig.bot, 1))) << "round again";
}

TEST(BotDrawing, BlinkLeavesABarOnTheEyesThatBlink)
{
    for (const EyeShape eye : allCases<EyeShape>()) {
        EngineRig rig;
        rig->bodyColor = BotColor{1, 1, 1};
        showEye(*rig.bot, eye);
        const int awake = inkPixels(*rig.bot);
        rig->open = 0;
        const int asleep = inkPixels(*rig.bot);
        const bool blinks = eye == EyeShape::pill || eye == EyeShape::wide || eye == EyeShape::cup
            || eye == EyeShape::wink;
        const bool inked = eye != EyeShape::heart && eye != EyeShape::star;
        EXPECT_EQ(asleep < awake, blinks) << rawText(eye).toStdString();
        EXPECT_EQ(asleep > 20, inked) << rawText(eye).toStdString();
    }
}

TEST(BotDrawing, EyeShapesShowTheirMarks)
{
    EngineRig rig;
    const auto at = [&](EyeShape eye) {
        showEye(*rig.bot, eye);
        return eyeColor(*rig.bot, -1).name();
    };
    EXPECT_EQ(at(EyeShape::heart), QStringLiteral("#ff4d6d"));
    EXPECT_EQ(at(EyeShape::star), QStringLiteral("#f7b32b"));
    showEye(*rig.bot, EyeShape::spiral);
    const QImage early = Canvas(*rig.bot).image();
    rig->lastTime += 0.1;
    EXPECT_NE(Canvas(*rig.bot).image(), early) << "it spins";
}

TEST(BotDrawing, BoxPeersAtItsSlotAndChews)
{
    EngineRig rig;
    rig->morph = 1;
    EXPECT_EQ(eyeOnShow(*rig.bot), EyeShape::pill);
    rig->slotH = 0.2;
    EXPECT_EQ(eyeOnShow(*rig.bot), EyeShape::cup);
    const double slotTop = -0.94 + 0.08;
    EXPECT_LT(Canvas(*rig.bot).at(0, slotTop + 0.1).lightness(), 30);
    EXPECT_GT(Canvas(*rig.bot).at(0, slotTop + 0.25).lightness(), 150);

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
    EXPECT_TRUE(handAt(x, y));
    EXPECT_TRUE(handAt(-x, y));

    rig->waveStart = rig->lastTime - 0.2;
    rig->waveUntil = rig->lastTime + 1;
    EXPECT_FALSE(handAt(x, y));
    EXPECT_TRUE(handAt(-x, y));
    const double s = std::sin(13 * 0.2);
    const double c = std::cos(13 * 0.2);
    EXPECT_TRUE(handAt(1.1 * rx + 2 * ry * 0.06 * c + 0.1, -0.15 * ry - 2 * ry * 0.14 * s));

    rig->isMini = true;
    EXPECT_FALSE(handAt(-x, y));
    rig->isMini = false;
    rig->waveUntil = 0;
    QImage small(46, 46, QImage::Format_ARGB32_Premultiplied);
    small.fill(Qt::black);
    QPainter painter(&small);
    drawHandsBehind(painter, *rig.bot, small.size());
    EXPECT_TRUE(isBlack(small.pixelColor(5, 33))) << "no hands on a body this small";
}

TEST(BotDrawing, BadgeSitsAtTheUpperLeftUntilTheBoxUnfolds)
{
    EngineRig rig;
    const BotColor green{0, 1, 0};
    const auto badgeAt = [&](BadgeType::Kind kind, double dx, double dy) {
        rig->badge = BadgeType{kind, green};
        rig->badgeS = 1;
        return Canvas(*rig.bot).at(-0.72 + dx, -0.72 + dy);
    };
    using enum BadgeType::Kind;
    EXPECT_EQ(badgeAt(dot, 0, 0), QColor(0, 255, 0));
    EXPECT_EQ(badgeAt(dot, 0.165, 0), QColor(Qt::black)) << "a ring sets it off from the head";
    EXPECT_EQ(badgeAt(bang, 0.16, 0), QColor(0, 255, 0));
    EXPECT_EQ(badgeAt(bang, 0, -0.04), QColor(Qt::white)) << "the sign";
    EXPECT_EQ(badgeAt(dots, 0.35, 0), QColor(0, 255, 0)) << "a capsule";
    EXPECT_EQ(badgeAt(dots, 0, 0), QColor(Qt::white));

    rig->isMini = true;
    EXPECT_EQ(badgeAt(bang, 0, -0.04), QColor(0, 255, 0)) << "a mini has no room for the sign";
    EXPECT_NE(badgeAt(dots, 0.35, 0), QColor(0, 255, 0));
    rig->isMini = false;
    rig->morph = 0.25;
    EXPECT_NE(badgeAt(dot, 0, 0), QColor(0, 255, 0));
}

TEST(BotDrawing, ParticlesRiseGrowAndFade)
{
    EngineRig rig;
    Particle heart{.type = Particle::ParticleType::heart,
                   .x = 0,
                   .y = -0.7,
                   .vx = 0,
                   .vy = -0.3,
                   .age = -0.1,
                   .life = 1.5,
                   .size = 0.2};
    const auto redAt = [&](double age) {
        heart.age = age;
        rig->particles = {heart};
        return Canvas(*rig.bot).at(0, (heart.y + heart.vy * age) * 1.3).red();
    };
    rig->particles = {heart};
    EXPECT_TRUE(isBlack(Canvas(*rig.bot).at(0, -0.95))) << "not yet born";
    EXPECT_NEAR(redAt(0.3), 255, 3);
    EXPECT_NEAR(redAt(0.9), 255 * 0.5, 5);
    EXPECT_LT(redAt(1.45), 12);
}

TEST(BotDrawing, PainterIsGivenBackAsItWas)
{
    EngineRig rig;
    rig->setState(BotState::working, true);
    rig->emitParticles(Particle::ParticleType::z, 2);
    rig->hands = 1;
    rig->tilt = 0.2;
    rig.play(0.3);
    QImage image(100, 100, QImage::Format_ARGB32_Premultiplied);
    QPainter painter(&image);
    painter.translate(3, 4);
    const QTransform before = painter.transform();
    drawHandsBehind(painter, *rig.bot, {100, 100});
    draw(painter, *rig.bot, {100, 100});
    drawHandsAndExtras(painter, *rig.bot, {100, 100});
    EXPECT_EQ(painter.transform(), before);
    EXPECT_FALSE(painter.hasClipping());
    EXPECT_EQ(painter.opacity(), 1);
}

} // namespace tirlo
