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
        keyCodes.insert(*keyCode);
        EXPECT_EQ(KeyCodes::toScanCode(*keyCode), scanCode);
    }
    EXPECT_GT(keyCodes.size(), 100U);
    EXPECT_FALSE(KeyCodes::fromScanCode(7)) << "below the first key";
    EXPECT_FALSE(KeyCodes::fromScanCode(100000));
    EXPECT_FALSE(KeyCodes::toScanCode(0xffff));
}

} // namespace
