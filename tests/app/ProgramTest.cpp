// The program with its real parts, whose system calls are replaced where the test must see or
// spoil them.

#include "app/Program.h"

#include <gtest/gtest.h>

#include <new>
#include <string>
#include <vector>

#include "platform/Scoped.h"
#include "platform/SystemPath.h"
#include "tests/support/CurrentFolder.h"
#include "tests/support/ImportHook.h"
#include "tests/support/ScratchRegistry.h"
#include "tests/support/TempTree.h"

namespace vw::test {
namespace {

struct Ended {
    UINT exitCode;
};

std::vector<std::wstring> debugTexts;
std::vector<std::wstring> boxTexts;

void WINAPI CatchDebugText(LPCWSTR text) { debugTexts.emplace_back(text); }

int WINAPI CatchBox(HWND, LPCWSTR text, LPCWSTR, UINT) {
    boxTexts.emplace_back(text);
    return IDOK;
}

void WINAPI ThrowEnd(UINT exitCode) { throw Ended{exitCode}; }

DWORD WINAPI RunOutOfMemory(DWORD, LPWSTR, DWORD) { throw std::bad_alloc(); }

// The first start in Arabic asks for the language of the keyboard, whose name cannot be read here.
TEST(ProgramFaults, LanguageService_ShowOnlyInTheDebugger) {
    debugTexts.clear();
    boxTexts.clear();
    const TempTree tree;
    const CurrentFolder folder(tree.Folder(L"Here"));
    const ScopeExit forgetFolder([] { CompleteRelativePathsIn({}); });
    const std::wstring settings = L"Software\\Tallowmere.Net\\app_tests";
    const ScratchKey key(HKEY_CURRENT_USER, settings);
    WriteValue(HKEY_CURRENT_USER, settings, L"Arabic", TextValue(L"-1"));
    WriteValue(HKEY_CURRENT_USER, settings, L"BackupTo", TextValue(tree.Path(L"Vault")));

    // Otherwise the digits of this machine may be warned about.
    const SavedValue digits(HKEY_CURRENT_USER, L"Control Panel\\International", L"NumShape");
    digits.Set(L"0");

    const ImportHook output("OutputDebugStringW", &CatchDebugText);
    const ImportHook boxes("MessageBoxW", &CatchBox);
    const ImportHook exit("ExitProcess", &ThrowEnd);
    const ImportHook names("VerLanguageNameW", &RunOutOfMemory);
    UINT exitCode = ~0U;
    try {
        Program program;
        program.Run(L"app_tests.exe /Author");
    } catch (const Ended& end) {
        exitCode = end.exitCode;
    }
    EXPECT_EQ(boxTexts, std::vector<std::wstring>{L"Author name is 'Nadir Qasemi'"});
    EXPECT_EQ(exitCode, 0U);
    ASSERT_FALSE(debugTexts.empty());
    for (const std::wstring& text : debugTexts) {
        EXPECT_EQ(text,
                  L"Error 7 in line 0\r\nin procedure CLanguageName of Class Module CCommonAPI"
                  L"\r\n\r\nOut of memory\r\n");
    }
}

}  // namespace
}  // namespace vw::test
