// A function that writes beyond its own array must not return: where to has been overwritten.

#include <gtest/gtest.h>

#include <array>

namespace vw {
namespace {

constexpr int kStackBufferOverrun = static_cast<int>(0xC0000409);

void Write(std::size_t count) {
    std::array<char, 16> text{};
    // Read back, so that no compiler or sanitizer knows where it points.
    char* volatile hidden = text.data();
    volatile char* const begin = hidden;
    for (std::size_t i = 0; i < count; ++i) begin[i] = 'x';
}

TEST(StackGuardDeathTest, AnOverrunArrayEndsTheProcessAtOnce) {
    // A real call, with a frame of its own.
    void (*volatile write)(std::size_t) = Write;
    write(16);
    EXPECT_EXIT(write(64), testing::ExitedWithCode(kStackBufferOverrun), "stack smashing detected");
}

}  // namespace
}  // namespace vw
