#include "tests/platform/ApiFixture.h"
#include "tests/platform/TestWindow.h"
#include "tests/support/ImportHook.h"

namespace vw::test {
namespace {

struct Invalidation {
    HWND window;
    RECT rectangle;
    BOOL erase;
};
Invalidation invalidation;

BOOL WINAPI RecordInvalidation(HWND window, const RECT* rectangle, BOOL erase) {
    invalidation = {window, *rectangle, erase};
    return TRUE;
}

class LanguageLayout : public ApiTest {
  protected:
    TestWindow window{L"VaultwrightTestsLayout"};

    [[nodiscard]] LONG_PTR Style() const { return GetWindowLongPtrW(window.Handle(), GWL_EXSTYLE); }
};

TEST_F(LanguageLayout, SwitchesTheOneBitOnAndOff) {
    const LONG_PTR before = Style();
    ASSERT_EQ(before & 0x400000, 0);
    ASSERT_NE(before & WS_EX_ACCEPTFILES, 0);
    api.LayoutRTL(window.Handle(), true);
    EXPECT_EQ(Style(), before | 0x400000);
    api.LayoutRTL(window.Handle(), true);
    EXPECT_EQ(Style(), before | 0x400000);
    api.LayoutRTL(window.Handle(), false);
    EXPECT_EQ(Style(), before);
    api.LayoutRTL(window.Handle(), false);
    EXPECT_EQ(Style(), before);
}

TEST_F(LanguageLayout, InvalidatesTheWindowWithoutErasing) {
    const ImportHook hook("InvalidateRect", &RecordInvalidation);
    invalidation = {};
    invalidation.erase = TRUE;
    api.LayoutRTL(window.Handle(), true);
    EXPECT_EQ(invalidation.window, window.Handle());
    EXPECT_EQ(invalidation.rectangle.left, 1);
    EXPECT_EQ(invalidation.rectangle.top, 0);
    EXPECT_EQ(invalidation.rectangle.right, 0);
    EXPECT_EQ(invalidation.rectangle.bottom, 0);
    EXPECT_FALSE(invalidation.erase);
}

}  // namespace
}  // namespace vw::test
