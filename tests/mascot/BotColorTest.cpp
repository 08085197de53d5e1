#include "mascot/BotColor.h"

#include <gtest/gtest.h>

namespace tirlo {

TEST(BotColor, HexTextGivesItsLowTwentyFourBits)
{
    const BotColor gold{0xf7 / 255.0, 0xb3 / 255.0, 0x2b / 255.0};
    for (const char *text : {"#F7B32B", "f7b32b", "##F7B32B#", "+F7B32B", "12F7B32B"})
        EXPECT_EQ(cgColorFromHex(QString::fromUtf8(text)), gold) << text;
    EXPECT_EQ(cgColorFromHex(u"1"), (BotColor{0, 0, 1 / 255.0}));
    EXPECT_EQ(cgColorFromHex(u"#-0"), BotColor{});
}

TEST(BotColor, TextThatIsNoHexadecimalNumberGivesNone)
{
    for (const char *text : {"", "#", "###", "red", "#F7 B3", " F7B32B", "0xF7B32B", "-1", "+",
                             "+-1", "F7#B3", "１", "10000000000000000"})
        EXPECT_EQ(cgColorFromHex(QString::fromUtf8(text)), std::nullopt) << text;
}

} // namespace tirlo
