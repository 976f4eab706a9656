#include "platform/UserLocale.h"

#include <gtest/gtest.h>

#include "platform/WindowsHeader.h"
#include "tests/support/ImportHook.h"

namespace vw::test {
namespace {

TEST(CompareForUser, Order_IsThatOfTheLettersWhateverTheirCase) {
    EXPECT_LT(CompareForUser(L"a", L"B"), 0);
    EXPECT_GT(CompareForUser(L"b", L"A"), 0);
    EXPECT_EQ(CompareForUser(L"Letter", L"lETTER"), 0);
    EXPECT_LT(CompareForUser(L"", L"a"), 0);
}

int WINAPI CompareNothing(LPCWSTR, DWORD, LPCWCH, int, LPCWCH, int, LPNLSVERSIONINFO, LPVOID,
                          LPARAM reserved) {
    EXPECT_EQ(reserved, 0);
    return 0;
}

TEST(CompareForUser, SystemCannotCompare_TextsAreEqual) {
    const ImportHook compare("CompareStringEx", &CompareNothing);
    EXPECT_EQ(CompareForUser(L"a", L"b"), 0);
}

LCTYPE asked = 0;
int WINAPI AnswerLocale(LPCWSTR, LCTYPE type, LPWSTR text, int) {
    asked = type;
    text[0] = L'x';
    return 2;
}

TEST(UserLocale, Separators_AreThoseOfTheSystem) {
    const ImportHook answer("GetLocaleInfoEx", &AnswerLocale);
    EXPECT_EQ(UserDateSeparator(), L"x");
    EXPECT_EQ(asked, static_cast<LCTYPE>(LOCALE_SDATE));
    EXPECT_EQ(UserTimeSeparator(), L"x");
    EXPECT_EQ(asked, static_cast<LCTYPE>(LOCALE_STIME));
    EXPECT_EQ(UserDecimalSign(), L"x");
    EXPECT_EQ(asked, static_cast<LCTYPE>(LOCALE_SDECIMAL));
}

}  // namespace
}  // namespace vw::test
