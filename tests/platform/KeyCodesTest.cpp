#include "platform/KeyCodes.h"

#include <gtest/gtest.h>

#include <set>

using namespace tirlo;

namespace {

TEST(KeyCodesTest, KeysOfEveryKindHaveTheirCodes)
{
    // Scan codes as an X server with the kernel's keyboards sends them.
    struct
    {
        std::uint32_t scanCode;
        std::uint16_t keyCode;
    } const cases[]{{9, 53}, {57, 45}, {36, 36}, {67, 122}, {111, 126}, {133, 55}};
    for (const auto &key : cases) {
        EXPECT_EQ(KeyCodes::fromScanCode(key.scanCode), key.keyCode) << key.scanCode;
        EXPECT_EQ(KeyCodes::toScanCode(key.keyCode), key.scanCode) << key.keyCode;
    }
    EXPECT_FALSE(KeyCodes::fromScanCode(7)) << "below the first key";
    EXPECT_FALSE(KeyCodes::fromScanCode(100000));
    EXPECT_FALSE(KeyCodes::toScanCode(0xffff));
}

TEST(KeyCodesTest, NoTwoKeysShareACode)
{
    std::set<std::uint16_t> keyCodes;
    int keys = 0;
    for (std::uint32_t scanCode = 0; scanCode < 1024; ++scanCode) {
        const auto keyCode = KeyCodes::fromScanCode(scanCode);
        if (!keyCode)
            continue;
        ++keys;
        keyCodes.insert(*keyCode);
        EXPECT_EQ(KeyCodes::toScanCode(*keyCode), scanCode);
    }
    EXPECT_GT(keys, 100);
    EXPECT_EQ(std::size_t(keys), keyCodes.size());
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
