#include <gtest/gtest.h>

#include <array>

#include "fsutil/KnownFolder.h"
#include "fsutil/Scripting.h"
#include "platform/TextCase.h"
#include "platform/Utf8.h"
#include "platform/WindowsHeader.h"
#include "tests/fsutil/FakeScriptShell.h"
#include "tests/support/TestEnvironment.h"

// Behind the header above, which it builds on.
#include <shlobj.h>

namespace vw::MMyScripting {
namespace {

using test::TestEnvironment;

// The same folders by the system's older numbers, asked in another way.
constexpr std::array<int, 18> kOtherNumbers = {CSIDL_COMMON_DESKTOPDIRECTORY,
                                               CSIDL_COMMON_STARTMENU,
                                               CSIDL_COMMON_PROGRAMS,
                                               CSIDL_COMMON_STARTUP,
                                               CSIDL_DESKTOPDIRECTORY,
                                               CSIDL_APPDATA,
                                               CSIDL_PRINTHOOD,
                                               CSIDL_TEMPLATES,
                                               CSIDL_FONTS,
                                               CSIDL_NETHOOD,
                                               CSIDL_DESKTOPDIRECTORY,
                                               CSIDL_STARTMENU,
                                               CSIDL_SENDTO,
                                               CSIDL_RECENT,
                                               CSIDL_STARTUP,
                                               CSIDL_FAVORITES,
                                               CSIDL_PERSONAL,
                                               CSIDL_PROGRAMS};

std::wstring Expected(int number) {
    wchar_t path[MAX_PATH + 1] = {};
    SHGetFolderPathW(nullptr, kOtherNumbers[static_cast<std::size_t>(number)], nullptr,
                     SHGFP_TYPE_CURRENT, path);
    return path;
}

std::wstring Folder(int code, bool isWinNT = true, int* codeAfter = nullptr) {
    TestEnvironment world;
    ScriptShell shell;
    const std::wstring path = GetSpecialFolders(world.system, shell, code, isWinNT);
    if (codeAfter != nullptr) *codeAfter = code;
    return path;
}

TEST(GetSpecialFolders, CodesFrom50_AreFoldersOfTheSystem) {
    wchar_t buffer[MAX_PATH + 1] = {};
    GetWindowsDirectoryW(buffer, MAX_PATH);
    EXPECT_EQ(Folder(50), buffer);
    GetSystemDirectoryW(buffer, MAX_PATH);
    EXPECT_EQ(Folder(51), buffer);
    GetTempPathW(MAX_PATH, buffer);
    EXPECT_EQ(Folder(52) + L"\\", buffer);
}

TEST(GetSpecialFolders, SubtractsFiftyFromTheCodesFrom50) {
    for (const bool isWinNT : {true, false}) {
        for (int code = 50; code <= 52; ++code) {
            int after = code;
            EXPECT_EQ(Folder(code, isWinNT, &after), Folder(code));
            EXPECT_EQ(after, code - 50) << "the gate comes before, not behind";
        }
    }
}

TEST(GetSpecialFolders, ReadsEveryOtherCodeFromTheCollection) {
    for (int number = 0; number < 18; ++number) {
        int after = -1;
        const std::wstring path = Folder(number, true, &after);
        EXPECT_FALSE(path.empty()) << number;
        EXPECT_TRUE(EqualNoCase(path, Expected(number)))
            << number << ": " << ToUtf8(path) << " is not " << ToUtf8(Expected(number));
        EXPECT_EQ(after, number);
    }
}

TEST(GetSpecialFolders, ReplacesFourCodesOnAnOldSystem) {
    struct Row {
        int before;
        int after;
    };
    for (const Row row : {Row{0, 4}, {1, 11}, {2, 17}, {3, 14}, {4, 4}, {16, 16}}) {
        int after = -1;
        const std::wstring path = Folder(row.before, false, &after);
        EXPECT_EQ(after, row.after);
        EXPECT_TRUE(EqualNoCase(path, Expected(row.after))) << row.before;
    }
}

TEST(GetSpecialFolders, UnknownCode_ReturnsEmptyText) {
    for (const int code : {18, 49, 53, 1000, -1, INT_MIN, INT_MAX}) {
        EXPECT_EQ(Folder(code), L"") << code;
    }
}

TEST(KnownFolderOfNumber, ReturnsFoldersForNumbersOfTheCollectionOnly) {
    for (int number = 0; number < 18; ++number) {
        EXPECT_TRUE(EqualNoCase(KnownFolderOfNumber(number), Expected(number))) << number;
    }
    EXPECT_EQ(KnownFolderOfNumber(-1), L"");
    EXPECT_EQ(KnownFolderOfNumber(18), L"");
}

TEST(WshShellInt, FirstLookUp_CreatesTheObject) {
    TestEnvironment world;
    ScriptShell shell;
    int code = 51;
    (void)GetSpecialFolders(world.system, shell, code, true);
    EXPECT_FALSE(shell.IsCreated()) << "the system's own folders need no object";
    code = 16;
    (void)GetSpecialFolders(world.system, shell, code, true);
    EXPECT_TRUE(shell.IsCreated());
}

TEST(WshShellInt, SystemWithoutTheObject_IsReported) {
    test::FakeScriptShell fake([](int) { return L""; });
    fake.RefuseToCreate();
    TestEnvironment world;
    ScriptShell shell;
    WshShellInt(world.system, shell);
    EXPECT_FALSE(shell.IsCreated());
    const test::ToldError told = world.errors.TakeOne();
    EXPECT_EQ(told.number, 75);
    EXPECT_EQ(told.procedure, L"WshShellInt");
    EXPECT_EQ(told.container, L"MMyScripting");
}

TEST(SharedShellObject, CreatesTheObjectOnceAndReadsByNumber) {
    const test::FakeScriptShell fake([](int number) { return L"X:\\" + std::to_wstring(number); });
    TestEnvironment world;
    ScriptShell shell;
    WshShellInt(world.system, shell);
    EXPECT_TRUE(shell.IsCreated());
    WshShellInt(world.system, shell);
    for (int code : {0, 5, 17, 40}) {
        const std::wstring expected = L"X:\\" + std::to_wstring(code);
        EXPECT_EQ(GetSpecialFolders(world.system, shell, code, true), expected);
    }
    int code = 2;
    EXPECT_EQ(GetSpecialFolders(world.system, shell, code, false), L"X:\\17");
    EXPECT_EQ(fake.Created(), 1);
}

TEST(SharedShellObject, NumberRefusedOrObjectMissing_SystemIsAsked) {
    test::FakeScriptShell fake([](int) { return L""; });
    EXPECT_TRUE(EqualNoCase(Folder(16), Expected(16)));
    EXPECT_EQ(fake.Created(), 1);
    fake.RefuseToCreate();
    EXPECT_TRUE(EqualNoCase(Folder(16), Expected(16)));
    EXPECT_EQ(Folder(40), L"");
}

TEST(SharedShellObject, AnswersAreOfOtherTypes_SystemIsAsked) {
    const auto text = [](VARIANT& result) {
        result.vt = VT_BSTR;
        result.bstrVal = SysAllocString(L"X:\\no folder");
        return S_OK;
    };
    const auto number = [](VARIANT& result) {
        result.vt = VT_I4;
        result.lVal = 16;
        return S_OK;
    };
    const auto noObject = [](VARIANT& result) {
        result.vt = VT_DISPATCH;
        result.pdispVal = nullptr;
        return S_OK;
    };
    const auto refusal = [](VARIANT&) { return E_FAIL; };
    for (const std::function<HRESULT(VARIANT&)>& answer :
         std::initializer_list<std::function<HRESULT(VARIANT&)>>{text, noObject, refusal}) {
        test::FakeScriptShell fake([](int) { return L"X:\\folder"; });
        fake.AnswerForCollection(answer);
        EXPECT_TRUE(EqualNoCase(Folder(16), Expected(16)));
    }
    test::FakeScriptShell fake([](int) { return L"X:\\folder"; });
    fake.AnswerForFolder(number);
    EXPECT_TRUE(EqualNoCase(Folder(16), Expected(16)));
}

}  // namespace
}  // namespace vw::MMyScripting
