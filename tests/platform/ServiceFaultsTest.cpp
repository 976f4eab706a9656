// Faults of the shell and language services appear in the debugger's output, and nowhere else.

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <string_view>
#include <vector>

#include "platform/DebugOutput.h"
#include "platform/Utf8.h"
#include "tests/platform/ApiFixture.h"
#include "tests/support/ImportHook.h"
#include "tests/support/TempTree.h"

namespace vw::test {
namespace {

// A debug build of Windows programs writes here as well; only texts of the program count.
std::vector<std::wstring> debugTexts;

void WINAPI CatchDebugText(LPCWSTR text) { debugTexts.emplace_back(text); }

/// Takes the place of a call of the system, which runs out of memory.
template <class Result, class... Arguments>
Result WINAPI RunOut(Arguments...) {
    throw std::bad_alloc();
}

/// Boxes that cannot be shown for lack of memory.
class FailingBoxes final : public MessageBoxes {
  public:
    BoxAnswer Show(const MessageBoxRequest&) override { throw std::bad_alloc(); }
};

/// The services as the program makes them, with the real output of the debugger. A box fails the
/// test.
class ServiceFaults : public testing::Test {
  protected:
    void SetUp() override { debugTexts.clear(); }

    /// The debugger has received this one fault of one operation.
    static void ExpectOutput(int number, std::wstring_view procedure,
                             std::wstring_view description) {
        const std::wstring beginning = L"Error " + std::to_wstring(number) + L" in line ";
        const std::wstring end = L"\r\nin procedure " + std::wstring(procedure) +
                                 L" of Class Module CCommonAPI\r\n\r\n" +
                                 std::wstring(description) + L"\r\n";
        ASSERT_EQ(debugTexts.size(), 1U);
        const std::wstring& text = debugTexts.front();
        ASSERT_TRUE(text.starts_with(beginning) && text.ends_with(end)) << ToUtf8(text);
        const std::wstring line =
            text.substr(beginning.size(), text.size() - beginning.size() - end.size());
        EXPECT_FALSE(line.empty());
        EXPECT_TRUE(std::all_of(line.begin(), line.end(), [](wchar_t unit) {
            return unit >= L'0' && unit <= L'9';
        })) << ToUtf8(text);
        debugTexts.clear();
    }
    static void ExpectShortage(std::wstring_view procedure) {
        ExpectOutput(error_number::kOutOfMemory, procedure, L"Out of memory");
    }

    const ImportHook output{"OutputDebugStringW", &CatchDebugText};
    DebugOutput faults;
    FakeMessageBoxes boxes;
    FailingBoxes failingBoxes;
    CodePage ansi;
    FailingCodePage failingPage;
    FaultyRegistry registry;
    CCommonAPI api{registry, ansi, boxes, faults};
    CCommonAPI withoutRegistry{registry, failingPage, boxes, faults};
    CCommonAPI withoutBoxes{registry, ansi, failingBoxes, faults};
    SavedValue tool{HKEY_LOCAL_MACHINE, L"SOFTWARE\\Microsoft\\Shared Tools\\MSINFO", L"PATH"};
    SavedValue toolFolder{HKEY_LOCAL_MACHINE, L"SOFTWARE\\Microsoft\\Shared Tools Location",
                          L"MSINFO"};
    SavedValue digits{HKEY_CURRENT_USER, L"Control Panel\\International", L"NumShape"};
};

TEST_F(ServiceFaults, LogonStart_ShowOnlyInTheDebugger) {
    EXPECT_FALSE(withoutRegistry.ApplicationSartup(L"Name"));
    ExpectShortage(L"RegValue");
    withoutRegistry.ApplicationSartup(L"Name", L"C:\\a.exe /S", true);
    ExpectShortage(L"RegValue");
    withoutRegistry.ApplicationSartup(L"Name", L"", false);
    ExpectShortage(L"RegValue");
    EXPECT_EQ(registry.changes, 0);
}

TEST_F(ServiceFaults, FileTypes_ShowOnlyInTheDebugger) {
    EXPECT_FALSE(withoutRegistry.RegisterFileType(L".vwtest"));
    ExpectShortage(L"RegValue");
    std::wstring type = L"VaultwrightTestsType";
    withoutBoxes.RegisterFileType(L".vwtest", type, L"C:\\a.bat", L"", true);
    ExpectShortage(L"RegisterFileType");
    // No text can be as long as this: the name of its key cannot be made.
    const std::wstring_view endless(L"", std::wstring().max_size());
    api.RegisterFileTypeCommand(endless, L"Backup", L"C:\\a.exe", false);
    ExpectOutput(error_number::kInvalidCall, L"RegisterFileTypeCommand",
                 DescriptionOf(error_number::kInvalidCall));
    EXPECT_EQ(registry.changes, 0);
}

TEST_F(ServiceFaults, SystemInformationDoesNotStart_ShowsOnlyInTheDebugger) {
    const TempTree tree;
    tool.Set(tree.Path(L"missing.exe"));
    api.ShellSysInfo();
    ExpectOutput(error_number::kFileNotFound, L"ShellSysInfo",
                 DescriptionOf(error_number::kFileNotFound) + L"\r\n" + tree.Path(L"missing.exe"));
    tool.Remove();
    toolFolder.Remove();
    withoutBoxes.ShellSysInfo();
    ExpectShortage(L"ShellSysInfo");
}

TEST_F(ServiceFaults, SystemFolderAndVersion_ShowOnlyInTheDebugger) {
    const ImportHook folder("GetWindowsDirectoryW", &RunOut<UINT, LPWSTR, UINT>);
    EXPECT_EQ(api.WinDirectory(), L"");
    ExpectShortage(L"WinDirectory");
    const ImportHook version("GetVersionExA", &RunOut<BOOL, OSVERSIONINFOA*>);
    EXPECT_FALSE(api.IsWinNT());
    ExpectShortage(L"IsWinNT");
}

TEST_F(ServiceFaults, Windows_ShowOnlyInTheDebugger) {
    const ImportHook find("FindWindowExW", &RunOut<HWND, HWND, HWND, LPCWSTR, LPCWSTR>);
    EXPECT_EQ(api.FindWindow(L"Class", L"Title"), nullptr);
    ExpectShortage(L"FindWindow");
    const ImportHook destroy("DestroyWindow", &RunOut<BOOL, HWND>);
    api.DestroyWindowVB(nullptr);
    ExpectShortage(L"DestroyWindowVB");
    const ImportHook position("SetWindowPos", &RunOut<BOOL, HWND, HWND, int, int, int, int, UINT>);
    api.TopMost(nullptr);
    ExpectShortage(L"TopMost");
    const ImportHook activate("SetActiveWindow", &RunOut<HWND, HWND>);
    api.ActiveWindow(nullptr);
    ExpectShortage(L"ActiveWindow");
}

TEST_F(ServiceFaults, LanguageNames_ShowOnlyInTheDebugger) {
    {
        const ImportHook names("VerLanguageNameW", &RunOut<DWORD, DWORD, LPWSTR, DWORD>);
        EXPECT_EQ(api.CLanguageName(0x0409), L"");
        ExpectShortage(L"CLanguageName");
        EXPECT_EQ(api.WinLocalLanguage(), L"");
        ExpectShortage(L"CLanguageName");
        EXPECT_FALSE(api.LanguageIsArabic());
        ExpectShortage(L"CLanguageName");
    }
    const ImportHook layouts("GetKeyboardLayoutNameW", &RunOut<BOOL, LPWSTR>);
    EXPECT_EQ(api.GetActiveLanguage(), L"");
    ExpectShortage(L"GetActiveLanguage");
    const ImportHook language("GetSystemDefaultLangID", &RunOut<LANGID>);
    EXPECT_EQ(api.WinLocalLanguage(), L"");
    ExpectShortage(L"WinLocalLanguage");
}

TEST_F(ServiceFaults, KeyboardLanguage_ShowsOnlyInTheDebugger) {
    const ImportHook layouts("ActivateKeyboardLayout", &RunOut<HKL, HKL, UINT>);
    const bool active = api.LanguageIsArabic();
    digits.Set(L"1");
    // The fault ends the operation before the digits are looked at, so no box is shown.
    api.LanguageIsArabic(!active);
    ExpectShortage(L"LanguageIsArabic");
    withoutBoxes.LanguageIsArabic(active);
    ExpectShortage(L"LanguageIsArabic");
}

}  // namespace
}  // namespace vw::test
