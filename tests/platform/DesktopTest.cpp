#include "platform/Desktop.h"

#include <gtest/gtest.h>

#include "platform/WindowsHeader.h"
#include "tests/support/ImportHook.h"

namespace vw::test {
namespace {

DWORD flagsOfTheStation = 0;

BOOL WINAPI AnswerFlags(HANDLE, int what, PVOID flags, DWORD size, LPDWORD) {
    EXPECT_EQ(what, UOI_FLAGS);
    EXPECT_EQ(size, sizeof(USEROBJECTFLAGS));
    static_cast<USEROBJECTFLAGS*>(flags)->dwFlags = flagsOfTheStation;
    return TRUE;
}

BOOL WINAPI AnswerNothing(HANDLE, int, PVOID, DWORD, LPDWORD) { return FALSE; }

HWINSTA WINAPI HaveNoStation() { return nullptr; }

TEST(Desktop, StationOfAUser_IsVisible) {
    const ImportHook answer("GetUserObjectInformationW", &AnswerFlags);
    flagsOfTheStation = WSF_VISIBLE;
    EXPECT_TRUE(DesktopIsVisible());
    flagsOfTheStation = 0;
    EXPECT_FALSE(DesktopIsVisible()) << "that of a service";
}

TEST(Desktop, SystemDoesNotAnswer_IsInvisible) {
    const ImportHook answer("GetUserObjectInformationW", &AnswerNothing);
    EXPECT_FALSE(DesktopIsVisible());
}

TEST(Desktop, NoStation_IsInvisible) {
    const ImportHook station("GetProcessWindowStation", &HaveNoStation);
    EXPECT_FALSE(DesktopIsVisible());
}

}  // namespace
}  // namespace vw::test
