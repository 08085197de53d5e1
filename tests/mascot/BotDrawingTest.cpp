#include "Canvas.h"
#include "EngineRig.h"
#include "mascot/BotEyes.h"
#include "ui/Color.h"

#include <gtest/gtest.h>

#include <cmath>

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
    rig->isMini = true;
    EXPECT_EQ(badgeAt(bang, 0, -0.04), green) << "a mini has no room for the sign";
    rig->isMini = false;
    rig->morph = 0.25;
    EXPECT_NE(badgeAt(dot, 0, 0), green);
}

TEST(BotColor, HexTextGivesItsLowTwentyFourBitsOrNothing)
{
    for (const char *text : {"#F7B32B", "f7b32b", "##F7B32B#", "+F7B32B", "12F7B32B"}) {
        EXPECT_EQ(cgColorFromHex(QString::fromUtf8(text)),
                  (BotColor{0xf7 / 255.0, 0xb3 / 255.0, 0x2b / 255.0}))
            << text;
        EXPECT_EQ(colorFromHex(QString::fromUtf8(text)), QColor(0xF7, 0xB3, 0x2B)) << text;
    }
    EXPECT_EQ(cgColorFromHex(u"1"), (BotColor{0, 0, 1 / 255.0}));
    EXPECT_EQ(cgColorFromHex(u"#-0"), BotColor{});

    for (const char *text : {"", "#", "###", "red", "#F7 B3", " F7B32B", "0xF7B32B", "-1", "+",
                             "+-1", "F7#B3", "１", "10000000000000000"}) {
        EXPECT_EQ(cgColorFromHex(QString::fromUtf8(text)), std::nullopt) << text;
        EXPECT_EQ(colorFromHex(QString::fromUtf8(text)), QColor(Qt::black)) << text;
    }
    EXPECT_EQ(lighter(QColor(0, 128, 250, 100), 0.3).rgba(), qRgba(77, 205, 255, 100));
}

} // namespace
