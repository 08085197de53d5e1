#include "platform/KeyCodes.h"

#include <gtest/gtest.h>

#include <set>

using namespace tirlo;

namespace {

TEST(KeyCodesTest, EveryKeyHasACodeOfItsOwn)
{
    std::set<std::uint16_t> keyCodes;
    for (std::uint32_t scanCode = 0; scanCode < 1024; ++scanCode) {
        const auto keyCode = KeyCodes::fromScanCode(scanCode);
        if (!keyCode)
            continue;
        EXPECT_TRUE(keyCodes.insert(*keyCode).second) << scanCode;
        EXPECT_EQ(KeyCodes::toScanCode(*keyCode), scanCode);
    }
    EXPECT_GT(keyCodes.size(), 100U);
    EXPECT_FALSE(KeyCodes::fromScanCode(7)) << "below the first key";
    EXPECT_FALSE(KeyCodes::fromScanCode(100000));
    EXPECT_FALSE(KeyCodes::toScanCode(0xffff));
}

TEST(KeyCodesTest, OnlyTheFourModifiersPassAndEachKeepsItsPlace)
{
    constexpr std::uint32_t numLock = 1 << 4;
    constexpr std::uint32_t capsLock = 1 << 1;
    constexpr std::uint32_t secondGroup = 1 << 13;
    EXPECT_EQ(KeyCodes::modifiersFromX(0x41 | numLock | capsLock | secondGroup), 0x120000U);
    EXPECT_EQ(KeyCodes::modifiersFromQt(Qt::ShiftModifier | Qt::MetaModifier | Qt::KeypadModifier),
              0x120000U);
    EXPECT_EQ(KeyCodes::modifiersToX(0x80000 | 0x10000), 1U << 3);

    for (std::uint32_t set = 0; set < 16; ++set) {
        const std::uint32_t bits = set * ModifierBits::shift;
        EXPECT_EQ(KeyCodes::modifiersFromX(KeyCodes::modifiersToX(bits)), bits);
        EXPECT_EQ(KeyCodes::modifiersFromQt(KeyCodes::modifiersToQt(bits)), bits);
    }
}

} // namespace
