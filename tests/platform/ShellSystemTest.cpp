#include <cstdio>
#include <string>
#include <vector>

#include "tests/platform/ApiFixture.h"
#include "tests/support/ImportHook.h"
#include "tests/support/TempTree.h"

namespace vw::test {
namespace {

constexpr wchar_t kMarkVariable[] = L"VAULTWRIGHT_TESTS_MARK";

// This program replaces the system information tool: started with the variable, it writes how
// it was started into the file that the variable names, and ends before any test.
struct StartedAsTool {
    StartedAsTool() {
        wchar_t mark[MAX_PATH];
        const DWORD length = GetEnvironmentVariableW(kMarkVariable, mark, MAX_PATH);
        if (length == 0 || length >= MAX_PATH) return;
        STARTUPINFOW startup{};
        GetStartupInfoW(&startup);
        const bool normal =
            (startup.dwFlags & STARTF_USESHOWWINDOW) != 0 && startup.wShowWindow == SW_SHOWNORMAL;
        const std::wstring text = std::wstring(normal ? L"normal" : L"other") + GetCommandLineW();
        const FileHandle file(CreateFileW(mark, GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS,
                                          FILE_ATTRIBUTE_NORMAL, nullptr));
        DWORD written = 0;
        WriteFile(file.Get(), text.data(), static_cast<DWORD>(text.size() * sizeof(wchar_t)),
                  &written, nullptr);
        ExitProcess(0);
    }
};
const StartedAsTool startedAsTool;

class ShellSystem : public ApiTest {
  protected:
    SavedValue program{HKEY_LOCAL_MACHINE, L"SOFTWARE\\Microsoft\\Shared Tools\\MSINFO", L"PATH"};
    SavedValue folder{HKEY_LOCAL_MACHINE, L"SOFTWARE\\Microsoft\\Shared Tools Location", L"MSINFO"};
    TempTree tree;

    void SetUp() override {
        program.Remove();
        folder.Remove();
        SetEnvironmentVariableW(kMarkVariable, tree.Path(L"mark").c_str());
    }
    void TearDown() override { SetEnvironmentVariableW(kMarkVariable, nullptr); }

    /// A copy of this program that replaces the tool.
    [[nodiscard]] std::wstring Tool(std::wstring_view relative) const {
        wchar_t self[MAX_PATH];
        GetModuleFileNameW(nullptr, self, MAX_PATH);
        const std::wstring path = tree.File(relative);
        EXPECT_TRUE(CopyFileW(self, path.c_str(), FALSE));
        return path;
    }

    /// What the tool wrote, once it has ended; empty when it was not started.
    [[nodiscard]] std::wstring Mark(const std::wstring& tool) const {
        constexpr int kTries = 500;
        for (int i = 0; i < kTries && !Exists(tree.Path(L"mark")); ++i) Sleep(20);
        // A running program cannot be opened for writing.
        for (int i = 0; i < kTries; ++i) {
            const FileHandle file(CreateFileW(tool.c_str(), GENERIC_WRITE, 0, nullptr,
                                              OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr));
            if (file) break;
            Sleep(20);
        }
        if (!Exists(tree.Path(L"mark"))) return {};
        const std::string bytes = ReadBytes(tree.Path(L"mark"));
        std::wstring text(bytes.size() / sizeof(wchar_t), L'\0');
        bytes.copy(reinterpret_cast<char*>(text.data()), bytes.size());
        return text;
    }
};

TEST_F(ShellSystem, SysInfo_FirstEntry_StartsItInANormalWindow) {
    const std::wstring tool = Tool(L"System Info\\tool.exe");
    program.Set(tool);
    api.ShellSysInfo();
    EXPECT_EQ(Mark(tool), L"normal\"" + tool + L"\"");
}

TEST_F(ShellSystem, SysInfo_EntryWithArguments_IsACommandLine) {
    const std::wstring tool = Tool(L"tool.exe");
    program.Set(L"\"" + tool + L"\" /x");
    api.ShellSysInfo();
    EXPECT_EQ(Mark(tool), L"normal\"" + tool + L"\" /x");
}

TEST_F(ShellSystem, SysInfo_BothEntries_StartsTheFirst) {
    const std::wstring tool = Tool(L"tool.exe");
    (void)Tool(L"Second\\MSINFO32.EXE");
    program.Set(tool);
    folder.Set(tree.Path(L"Second"));
    api.ShellSysInfo();
    EXPECT_EQ(Mark(tool), L"normal\"" + tool + L"\"");
}

TEST_F(ShellSystem, SysInfo_SecondEntry_StartsTheToolInItsFolder) {
    const std::wstring tool = Tool(L"System Info\\MSINFO32.EXE");
    folder.Set(tree.Path(L"System Info"));
    api.ShellSysInfo();
    EXPECT_EQ(Mark(tool), L"normal\"" + tool + L"\"");
}

TEST_F(ShellSystem, SysInfo_NoEntry_IsUnavailable) {
    boxes.Expect(L"System Information Is Unavailable At This Time");
    api.ShellSysInfo();
    ASSERT_EQ(boxes.Shown().size(), 1U);
    const MessageBoxRequest& box = boxes.Shown().front();
    EXPECT_EQ(box.text, L"System Information Is Unavailable At This Time");
    EXPECT_EQ(box.title, kApplicationTitle);
    EXPECT_EQ(box.buttons, BoxButtons::Ok);
    EXPECT_EQ(box.icon, BoxIcon::None);
    EXPECT_FALSE(box.rightToLeft);
}

TEST_F(ShellSystem, SysInfo_FolderWithoutTheTool_IsUnavailable) {
    folder.Set(tree.Folder(L"Empty"));
    boxes.Expect(L"System Information Is Unavailable At This Time");
    api.ShellSysInfo();
}

struct Started {
    std::wstring program;
    std::wstring commandLine;
    DWORD size;
};
std::vector<Started> started;
// The system says what its parameters are. NOLINTNEXTLINE(readability-non-const-parameter)
BOOL WINAPI NoteStart(LPCWSTR program, LPWSTR commandLine, LPSECURITY_ATTRIBUTES,
                      LPSECURITY_ATTRIBUTES, BOOL, DWORD, LPVOID, LPCWSTR, LPSTARTUPINFOW startup,
                      LPPROCESS_INFORMATION process) {
    started.push_back({program == nullptr ? L"" : program, commandLine, startup->cb});
    process->hProcess = CreateEventW(nullptr, FALSE, FALSE, nullptr);
    process->hThread = CreateEventW(nullptr, FALSE, FALSE, nullptr);
    return TRUE;
}
const ImportHook* closing = nullptr;
int handlesClosed = 0;
BOOL WINAPI CountClosed(HANDLE handle) {
    ++handlesClosed;
    return closing->Original<decltype(CloseHandle)>()(handle);
}

TEST_F(ShellSystem, SysInfo_StartedTool_ItsHandlesAreClosed) {
    program.Set(tree.File(L"tool.exe"));
    const ImportHook start("CreateProcessW", &NoteStart);
    const ImportHook close("CloseHandle", &CountClosed);
    closing = &close;
    handlesClosed = 0;
    started.clear();
    api.ShellSysInfo();
    EXPECT_EQ(handlesClosed, 2);
    ASSERT_EQ(started.size(), 1U);
    EXPECT_EQ(started[0].size, sizeof(STARTUPINFOW));
}

TEST_F(ShellSystem, SysInfo_FolderOfThatName_IsNotTheTool) {
    const ImportHook start("CreateProcessW", &NoteStart);
    started.clear();
    tree.Folder(L"System Info\\MSINFO32.EXE");
    folder.Set(tree.Path(L"System Info"));
    boxes.Expect(L"System Information Is Unavailable At This Time");
    api.ShellSysInfo();
    EXPECT_EQ(started.size(), 0U);
    // A command whose first words are the name of a folder.
    program.Set(tree.Path(L"System Info"));
    api.ShellSysInfo();
    ASSERT_EQ(started.size(), 1U);
    EXPECT_EQ(started[0].program, L"");
    EXPECT_EQ(started[0].commandLine, tree.Path(L"System Info"));
}

TEST_F(ShellSystem, SysInfo_DoesNotStart_ShowsNoBox) {
    program.Set(tree.Path(L"missing.exe"));
    folder.Set(tree.Path(L"System Info"));
    api.ShellSysInfo();
    const ToldError fault = faults.TakeOne();
    EXPECT_EQ(fault.number, error_number::kFileNotFound);
    EXPECT_EQ(fault.procedure, L"ShellSysInfo");
    EXPECT_EQ(fault.container, L"CCommonAPI");
}

TEST_F(ShellSystem, WinDirectory_IsTheFolderOfWindows) {
    const std::wstring directory = api.WinDirectory();
    EXPECT_TRUE(Exists(directory + L"\\system32\\kernel32.dll"));
    EXPECT_FALSE(directory.ends_with(L'\\'));
}

UINT WINAPI NoDirectory(LPWSTR, UINT) { return 0; }

UINT WINAPI ShortDirectory(LPWSTR buffer, UINT size) {
    if (size != 255 || buffer[0] != L' ' || buffer[254] != L' ') return 0;
    buffer[0] = L'W';
    buffer[1] = L':';
    return 2;
}

TEST_F(ShellSystem, WinDirectory_HasTheLengthThatTheSystemReturns) {
    {
        const ImportHook hook("GetWindowsDirectoryW", &ShortDirectory);
        EXPECT_EQ(api.WinDirectory(), L"W:");
    }
    const ImportHook hook("GetWindowsDirectoryW", &NoDirectory);
    EXPECT_EQ(api.WinDirectory(), L"");
}

TEST_F(ShellSystem, WinVersion_IsEmpty) { EXPECT_EQ(api.WinVersion(), L""); }

BOOL WINAPI NoVersion(OSVERSIONINFOA*) { return FALSE; }

BOOL WINAPI VersionOfPlatform1(OSVERSIONINFOA* version) {
    version->dwPlatformId = VER_PLATFORM_WIN32_WINDOWS;
    return TRUE;
}

DWORD askedVersionSize = 0;

BOOL WINAPI VersionOfPlatform2(OSVERSIONINFOA* version) {
    askedVersionSize = version->dwOSVersionInfoSize;
    version->dwPlatformId = VER_PLATFORM_WIN32_NT;
    return TRUE;
}

TEST_F(ShellSystem, IsWinNT_OnThisSystem_ReturnsTrue) { EXPECT_TRUE(api.IsWinNT()); }

TEST_F(ShellSystem, IsWinNT_OnPlatform2Only_ReturnsTrue) {
    {
        const ImportHook hook("GetVersionExA", &VersionOfPlatform1);
        EXPECT_FALSE(api.IsWinNT());
    }
    const ImportHook hook("GetVersionExA", &VersionOfPlatform2);
    EXPECT_TRUE(api.IsWinNT());
    EXPECT_EQ(askedVersionSize, 156U);
}

TEST_F(ShellSystem, UnknownSystem_IsNotWinNT) {
    const ImportHook hook("GetVersionExA", &NoVersion);
    EXPECT_FALSE(api.IsWinNT());
}

}  // namespace
}  // namespace vw::test
