#include "platform/SystemClock.h"

#include <gtest/gtest.h>

#include <optional>
#include <string_view>

#include "platform/WindowsHeader.h"
#include "tests/support/ImportHook.h"
// The declarations of power management need those of the system first.
#include <powrprof.h>

namespace vw::test {
namespace {

constexpr std::uint64_t kNow = 1'000'000;
constexpr std::uint64_t kUnitsPerMillisecond = 10'000;

std::uint64_t lastWake = 0;
LONG status = 0;
int librariesGivenBack = 0;

ULONGLONG WINAPI SteadyCount() { return kNow; }

LONG WINAPI AnswerWithLastWake(POWER_INFORMATION_LEVEL level, PVOID input, ULONG inputSize,
                               PVOID output, ULONG outputSize) {
    EXPECT_EQ(level, LastWakeTime);
    EXPECT_EQ(input, nullptr);
    EXPECT_EQ(inputSize, 0U);
    EXPECT_EQ(outputSize, sizeof lastWake);
    *static_cast<std::uint64_t*>(output) = lastWake;
    return status;
}

FARPROC WINAPI FindAnswer(HMODULE, LPCSTR name) {
    EXPECT_EQ(std::string_view(name), "CallNtPowerInformation");
    return reinterpret_cast<FARPROC>(reinterpret_cast<void*>(&AnswerWithLastWake));
}

FARPROC WINAPI FindNothing(HMODULE, LPCSTR) { return nullptr; }

HMODULE WINAPI LoadNothing(LPCWSTR, HANDLE, DWORD) { return nullptr; }

const ImportHook* givingBack = nullptr;
BOOL WINAPI CountGivenBack(HMODULE library) {
    ++librariesGivenBack;
    return givingBack->Original<decltype(FreeLibrary)>()(library);
}

class SystemClockTest : public testing::Test {
  protected:
    SystemClockTest() {
        status = 0;
        librariesGivenBack = 0;
        givingBack = &giveBack;
    }
    static std::optional<std::uint64_t> SinceWaking(std::uint64_t wake) {
        lastWake = wake;
        return SystemClock().MillisecondsSinceWaking();
    }

    const ImportHook count{"GetTickCount64", &SteadyCount};
    const ImportHook find{"GetProcAddress", &FindAnswer};
    const ImportHook giveBack{"FreeLibrary", &CountGivenBack};
};

TEST_F(SystemClockTest, Milliseconds_CountSinceTheStartOfTheSystem) {
    EXPECT_EQ(SystemClock().Milliseconds(), kNow);
}

TEST_F(SystemClockTest, SinceWaking_IsTheTimeFromThenToNow) {
    EXPECT_EQ(SinceWaking(400'000 * kUnitsPerMillisecond), kNow - 400'000);
    EXPECT_EQ(SinceWaking(kNow * kUnitsPerMillisecond), 0U);
    EXPECT_EQ(SinceWaking(1), kNow) << "less than a millisecond behind the start";
}

TEST_F(SystemClockTest, SinceWaking_NeverSlept_IsUnknown) {
    EXPECT_EQ(SinceWaking(0), std::nullopt);
}

TEST_F(SystemClockTest, SinceWaking_TimeThatIsToCome_IsUnknown) {
    EXPECT_EQ(SinceWaking((kNow + 1) * kUnitsPerMillisecond), std::nullopt);
}

TEST_F(SystemClockTest, SinceWaking_SystemRefuses_IsUnknown) {
    status = 1;
    EXPECT_EQ(SinceWaking(400'000 * kUnitsPerMillisecond), std::nullopt);
    status = -1;
    EXPECT_EQ(SinceWaking(400'000 * kUnitsPerMillisecond), std::nullopt);
}

TEST_F(SystemClockTest, SinceWaking_SystemHasNoAnswer_IsUnknown) {
    const ImportHook nothing("GetProcAddress", &FindNothing);
    EXPECT_EQ(SinceWaking(400'000 * kUnitsPerMillisecond), std::nullopt);
}

TEST_F(SystemClockTest, SinceWaking_NoLibrary_IsUnknown) {
    const ImportHook nothing("LoadLibraryExW", &LoadNothing);
    EXPECT_EQ(SinceWaking(400'000 * kUnitsPerMillisecond), std::nullopt);
    EXPECT_EQ(librariesGivenBack, 0);
}

TEST_F(SystemClockTest, SinceWaking_GivesTheLibraryBack) {
    static_cast<void>(SinceWaking(1));
    EXPECT_EQ(librariesGivenBack, 1);
}

}  // namespace
}  // namespace vw::test
