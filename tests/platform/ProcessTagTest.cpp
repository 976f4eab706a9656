#include "platform/ProcessTag.h"

#include <gtest/gtest.h>

#include <string>

#include "platform/Handle.h"
#include "tests/support/ImportHook.h"

namespace vw {
namespace {

using test::ImportHook;

std::wstring HostName() {
    wchar_t name[256] = {};
    DWORD length = 256;
    EXPECT_NE(GetComputerNameExW(ComputerNameDnsHostname, name, &length), 0);
    return name;
}

TEST(ProcessTagTest, ThisProcess_IsNotGone) {
    const ProcessTag self = ThisProcess();
    EXPECT_EQ(self, ThisProcess());
    EXPECT_NE(self.processStart, 0U);
    EXPECT_FALSE(IsGone(self));
}

TEST(ProcessTagTest, OtherProcessWithTheSameId_IsGone) {
    ProcessTag tag = ThisProcess();
    tag.processStart -= 1;
    EXPECT_TRUE(IsGone(tag));
}

TEST(ProcessTagTest, ProcessOfAnotherComputer_IsNotGone) {
    ProcessTag tag = ThisProcess();
    tag.computer += 1;
    tag.processStart -= 1;
    EXPECT_FALSE(IsGone(tag));
}

TEST(ProcessTagTest, EndedProcess_IsGone) {
    STARTUPINFOW startup{};
    startup.cb = sizeof startup;
    PROCESS_INFORMATION info{};
    std::wstring command = L"cmd.exe /c exit 0";
    ASSERT_NE(CreateProcessW(nullptr, command.data(), nullptr, nullptr, FALSE, CREATE_SUSPENDED,
                             nullptr, nullptr, &startup, &info),
              0);
    KernelHandle process(info.hProcess);
    const KernelHandle thread(info.hThread);
    FILETIME created{};
    FILETIME other{};
    GetProcessTimes(process.Get(), &created, &other, &other, &other);
    ProcessTag tag = ThisProcess();
    tag.processId = info.dwProcessId;
    tag.processStart =
        (static_cast<std::uint64_t>(created.dwHighDateTime) << 32) | created.dwLowDateTime;
    EXPECT_FALSE(IsGone(tag));
    ResumeThread(thread.Get());
    ASSERT_EQ(WaitForSingleObject(process.Get(), 30000), WAIT_OBJECT_0);
    EXPECT_TRUE(IsGone(tag)) << "while a handle keeps the id";
    process.Reset();
    EXPECT_TRUE(IsGone(tag));
}

DWORD failure = 0;
HANDLE WINAPI RefuseProcess(DWORD, BOOL, DWORD) {
    SetLastError(failure);
    return nullptr;
}

TEST(ProcessTagTest, ProcessThatDoesNotExist_IsGone) {
    const ImportHook open("OpenProcess", &RefuseProcess);
    failure = ERROR_INVALID_PARAMETER;
    EXPECT_TRUE(IsGone(ThisProcess()));
    failure = ERROR_ACCESS_DENIED;
    EXPECT_FALSE(IsGone(ThisProcess())) << "somebody else's";
}

BOOL WINAPI RefuseTimes(HANDLE, LPFILETIME, LPFILETIME, LPFILETIME, LPFILETIME) { return FALSE; }

TEST(ProcessTagTest, ProcessWithoutAStartTime_IsNotGone) {
    const ProcessTag self = ThisProcess();
    const ImportHook refuse("GetProcessTimes", &RefuseTimes);
    EXPECT_FALSE(IsGone(self));
}

TEST(ProcessTagTest, ComputersOfOneName_Differ) {
    EXPECT_NE(ComputerTag(L"desk", L"4c4c4544-0001"), ComputerTag(L"desk", L"4c4c4544-0002"));
    EXPECT_NE(ThisProcess().computer, ComputerTag(HostName(), {}));
}

TEST(ProcessTagTest, DeadProcess_TaggedByAnEarlierVersion_IsGone) {
    ProcessTag tag = ThisProcess();
    tag.computer = ComputerTag(HostName(), {});
    EXPECT_FALSE(IsGone(tag));
    tag.processStart -= 1;
    EXPECT_TRUE(IsGone(tag));
}

}  // namespace
}  // namespace vw
