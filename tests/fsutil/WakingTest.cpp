#include "fsutil/Waking.h"

#include <gtest/gtest.h>

#include "platform/SystemClock.h"
#include "tests/support/TestEnvironment.h"

namespace vw::test {
namespace {

class Waking : public testing::Test {
  protected:
    /// Whether something that comes `afterwards` milliseconds later is found.
    bool Finds(std::uint64_t afterwards) {
        const std::uint64_t comes = world.clock.Milliseconds() + afterwards;
        return IsThereAfterWaking(world.system, cancel,
                                  [&] { return world.clock.Milliseconds() >= comes; });
    }

    TestEnvironment world;
    CancelToken cancel;
};

TEST_F(Waking, NeverSlept_AsksOnce) {
    EXPECT_TRUE(Finds(0));
    EXPECT_FALSE(Finds(1));
    EXPECT_EQ(world.pump.Waited(), 0U);
}

TEST_F(Waking, WokeLately_AsksAgainForTenSeconds) {
    world.clock.Wake();
    EXPECT_TRUE(Finds(0));
    EXPECT_EQ(world.pump.Waited(), 0U);
    EXPECT_TRUE(Finds(9'900));
    EXPECT_GT(world.pump.Yields(), 10) << "messages are processed meanwhile";
    world.clock.Wake();
    EXPECT_FALSE(Finds(11'000));
}

TEST_F(Waking, WokeAMinuteAgo_AsksOnce) {
    world.clock.Wake();
    world.clock.Advance(59'999);
    EXPECT_TRUE(Finds(1'000));
    world.clock.Wake();
    world.clock.Advance(60'000);
    EXPECT_FALSE(Finds(1'000));
}

TEST_F(Waking, Cancelled_EndsTheWait) {
    world.clock.Wake();
    world.pump.AtYield(3, [this] { cancel.Request(); });
    EXPECT_FALSE(Finds(9'000));
    EXPECT_EQ(world.pump.Yields(), 3);
}

TEST(SystemClock, SinceWaking_IsNoLongerThanTheComputerRuns) {
    const SystemClock clock;
    const auto sinceWaking = clock.MillisecondsSinceWaking();
    if (!sinceWaking) GTEST_SKIP() << "the computer has not slept, or the system does not say";
    EXPECT_LE(*sinceWaking, clock.Milliseconds());
}

}  // namespace
}  // namespace vw::test
