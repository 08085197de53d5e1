#include "mascot/BotColor.h"
#include "ui/Color.h"

#include <gtest/gtest.h>

using namespace tirlo;

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
