#include "tests/platform/ApiFixture.h"
#include "tests/platform/TestWindow.h"
#include "tests/support/ImportHook.h"

namespace vw::test {
namespace {

class ShellWindows : public ApiTest {};

TEST_F(ShellWindows, Find_ByClassTitleOrBoth_ReturnsTheWindow) {
    const TestWindow window(L"VaultwrightTestsFind", L"Vaultwright tests: نافذة");
    const HWND handle = window.Handle();
    ASSERT_NE(handle, nullptr);
    EXPECT_EQ(api.FindWindow(window.ClassName(), L""), handle);
    EXPECT_EQ(api.FindWindow(L"", L"Vaultwright tests: نافذة"), handle);
    EXPECT_EQ(api.FindWindow(window.ClassName(), L"Vaultwright tests: نافذة"), handle);
}

TEST_F(ShellWindows, Find_NoSuchWindow_ReturnsNull) {
    const TestWindow window(L"VaultwrightTestsFind", L"Vaultwright tests");
    EXPECT_EQ(api.FindWindow(L"VaultwrightTestsMissing", L""), nullptr);
    EXPECT_EQ(api.FindWindow(L"", L"Vaultwright tests: no such title"), nullptr);
    EXPECT_EQ(api.FindWindow(window.ClassName(), L"another title"), nullptr);
}

struct FindArguments {
    HWND parent;
    HWND after;
    bool hasClass;
    bool hasTitle;
};
FindArguments findArguments;

HWND WINAPI RecordFind(HWND parent, HWND after, LPCWSTR className, LPCWSTR title) {
    findArguments = {parent, after, className != nullptr, title != nullptr};
    return nullptr;
}

TEST_F(ShellWindows, Find_EmptyTexts_SearchesAllTopLevelWindows) {
    const ImportHook hook("FindWindowExW", &RecordFind);
    findArguments = {HWND_TOPMOST, HWND_TOPMOST, true, true};
    (void)api.FindWindow(L"", L"");
    EXPECT_EQ(findArguments.parent, nullptr);
    EXPECT_EQ(findArguments.after, nullptr);
    EXPECT_FALSE(findArguments.hasClass);
    EXPECT_FALSE(findArguments.hasTitle);
}

TEST_F(ShellWindows, Destroy_RemovesTheWindow) {
    const TestWindow window(L"VaultwrightTestsDestroy");
    ASSERT_TRUE(IsWindow(window.Handle()));
    api.DestroyWindowVB(window.Handle());
    EXPECT_FALSE(IsWindow(window.Handle()));
    api.DestroyWindowVB(window.Handle());
    api.DestroyWindowVB(nullptr);
}

TEST_F(ShellWindows, TopMost_KeepsThePositionOfTheWindow) {
    const TestWindow window(L"VaultwrightTestsTopMost");
    RECT before{};
    GetWindowRect(window.Handle(), &before);
    ASSERT_EQ(GetWindowLongPtrW(window.Handle(), GWL_EXSTYLE) & WS_EX_TOPMOST, 0);
    api.TopMost(window.Handle());
    RECT after{};
    GetWindowRect(window.Handle(), &after);
    EXPECT_NE(GetWindowLongPtrW(window.Handle(), GWL_EXSTYLE) & WS_EX_TOPMOST, 0);
    EXPECT_TRUE(EqualRect(&before, &after));
}

TEST_F(ShellWindows, ActiveWindow_ActivatesTheWindow) {
    const TestWindow first(L"VaultwrightTestsActive1");
    const TestWindow second(L"VaultwrightTestsActive2");
    api.ActiveWindow(first.Handle());
    EXPECT_EQ(GetActiveWindow(), first.Handle());
    api.ActiveWindow(second.Handle());
    EXPECT_EQ(GetActiveWindow(), second.Handle());
}

}  // namespace
}  // namespace vw::test
