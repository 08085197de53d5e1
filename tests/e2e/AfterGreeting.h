#pragma once

#include "kit/Agent.h"
#include "kit/Program.h"

#include <gtest/gtest.h>

namespace tirlo::e2e {

/// Where the pointer cannot fold the greeting away; it goes there before the program starts.
struct PointerAway
{
    PointerAway() { movePointer(640, 700); }
};

/// The program once its greeting has come and gone, and an agent in an editor.
class AfterGreeting : public testing::Test, PointerAway
{
protected:
    void SetUp() override
    {
        ASSERT_TRUE(program.isReady());
        ASSERT_TRUE(waitForWidth(openWidth)) << "a start opens the island for the greeting";
        ASSERT_TRUE(waitForWidth(compactWidth, 15000)) << "the greeting folds away by itself";
    }

    /// Opens the island by a click, after which the pointer stays on it and keeps it open.
    static bool open()
    {
        clickAt(screenMiddle(), 10);
        return waitForWidth(openWidth);
    }

    Program program{TIRLO_PROGRAM};
    Agent editor{program.hookScript(), "session-1", "/src/lighthouse"};
};

} // namespace tirlo::e2e
