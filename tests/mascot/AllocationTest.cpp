#include "EngineRig.h"

#include <gtest/gtest.h>

#include <atomic>
#include <cstdlib>
#include <new>

/// Allocations of the whole program so far.
static std::atomic<std::size_t> allocations = 0;

void *operator new(std::size_t size, const std::nothrow_t &) noexcept
{
    ++allocations;
    return std::malloc(size ? size : 1);
}

void *operator new(std::size_t size)
{
    if (void *memory = operator new(size, std::nothrow))
        return memory;
    throw std::bad_alloc();
}

void operator delete(void *memory) noexcept
{
    std::free(memory);
}

void operator delete(void *memory, std::size_t) noexcept
{
    std::free(memory);
}

using namespace tirlo;

TEST(BotEngineAllocations, UpdateNeverAllocatesOnceWarm)
{
    for (const bool mini : {false, true}) {
        for (const BotState state : allCases<BotState>()) {
            // A low chance means double blinks and sweat at every tick.
            EngineRig rig(0.1);
            rig->isMini = mini;
            rig->setState(state, true);
            if (mini)
                rig->setPermanentEmote(state == BotState::error ? BotEmote::annoyed
                                                                : BotEmote::love);
            rig.play(1);
            ASSERT_GT(allocations, 0u) << "the counter counts";

            std::size_t inUpdates = 0;
            for (int i = 0; i < 300; ++i) {
                rig.queue.advance(1.0 / 60);
                const std::size_t before = allocations;
                rig->update(BotEngine::frameStep);
                inUpdates += allocations - before;
            }
            EXPECT_EQ(inUpdates, 0u) << rawText(state).toStdString();
        }
    }
}
