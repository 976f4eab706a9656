// A function that writes beyond its own array must not return: where to has been overwritten.

#include <gtest/gtest.h>

#include <array>
#include <cstdint>

namespace vw {
namespace {

constexpr int kStackBufferOverrun = static_cast<int>(0xC0000409);

// The count is no argument: that one would lie beyond the array, too.
template <std::size_t kCount>
void Write() {
    std::array<char, 16> text{};
    // Read back, so that no compiler or sanitizer can track where it points.
    char* volatile hidden = text.data();
    volatile char* const begin = hidden;
    for (std::size_t i = 0; i < kCount; ++i) begin[i] = 'x';
}

#ifdef __MINGW32__

}  // namespace
}  // namespace vw

extern "C" std::uintptr_t __stack_chk_guard;  // NOLINT(clang-diagnostic-reserved-identifier)

namespace vw {
namespace {

// A text that is too long can write its final zero only.
TEST(StackGuard, Value_IsNotZero) { EXPECT_NE(__stack_chk_guard, 0U); }

#endif

TEST(StackGuardDeathTest, ArrayOverrun_EndsTheProcess) {
    // A real call, with a frame of its own.
    void (*volatile within)() = Write<16>;
    void (*volatile beyond)() = Write<64>;
    within();
    EXPECT_EXIT(beyond(), testing::ExitedWithCode(kStackBufferOverrun), "stack smashing detected");
}

}  // namespace
}  // namespace vw
