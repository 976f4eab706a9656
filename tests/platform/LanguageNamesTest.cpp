#include <cstring>
#include <vector>

#include "tests/platform/ApiFixture.h"
#include "tests/support/ImportHook.h"

namespace vw::test {
namespace {

// What the system answers in these tests.
const wchar_t* layoutName = nullptr;  // null: the call fails
const wchar_t* languageName = nullptr;
std::vector<DWORD> askedLanguages;
std::vector<std::pair<HKL, UINT>> switches;
std::size_t arabicAfter = 0;  // number of switches after which the layout is Arabic

BOOL WINAPI LayoutName(LPWSTR buffer) {
    if (layoutName == nullptr) return FALSE;
    std::wcscpy(buffer, layoutName);
    return TRUE;
}

DWORD WINAPI LanguageName(DWORD language, LPWSTR buffer, DWORD size) {
    askedLanguages.push_back(language);
    if (languageName == nullptr || size != 256) return 0;
    std::wcscpy(buffer, languageName);
    return static_cast<DWORD>(std::wcslen(languageName));
}

DWORD WINAPI LanguageNameAfterSwitches(DWORD, LPWSTR buffer, DWORD) {
    std::wcscpy(buffer, switches.size() >= arabicAfter ? L"العربية (مصر)" : L"English (US)");
    return static_cast<DWORD>(std::wcslen(buffer));
}

HKL WINAPI RecordSwitch(HKL layout, UINT flags) {
    switches.emplace_back(layout, flags);
    return layout;
}

class LanguageNames : public ApiTest {
  protected:
    // Whether the digits suit Arabic text depends on the machine: the tests say it.
    SavedValue digits{HKEY_CURRENT_USER, L"Control Panel\\International", L"NumShape"};

    void SetUp() override {
        digits.Set(L"0");
        layoutName = L"00000409";
        languageName = L"English (United States)";
        askedLanguages.clear();
        switches.clear();
        arabicAfter = 0;
    }

    [[nodiscard]] bool IsArabicWhenNamed(const wchar_t* name) {
        const ImportHook names("VerLanguageNameW", &LanguageName);
        languageName = name;
        return api.LanguageIsArabic();
    }
    void AskFor(bool arabic) {
        const ImportHook names("VerLanguageNameW", &LanguageNameAfterSwitches);
        const ImportHook activate("ActivateKeyboardLayout", &RecordSwitch);
        api.LanguageIsArabic(arabic);
    }
};

TEST_F(LanguageNames, RemovesTheCountryFromTheSystemsName) {
    const std::wstring english = api.CLanguageName(0x0409);
    EXPECT_FALSE(english.empty());
    EXPECT_EQ(english.find(L'('), std::wstring::npos);
    EXPECT_FALSE(english.starts_with(L' ') || english.ends_with(L' '));
    EXPECT_EQ(english, api.CLanguageName(0x0809));
    EXPECT_NE(english, api.CLanguageName(0x0401));
}

TEST_F(LanguageNames, EndsBeforeTheFirstBracketAndTrimsBlanks) {
    const ImportHook names("VerLanguageNameW", &LanguageName);
    languageName = L"  Old Norse (Iceland) (runes) ";
    EXPECT_EQ(api.CLanguageName(7), L"Old Norse");
    languageName = L"  Esperanto ";
    EXPECT_EQ(api.CLanguageName(7), L"Esperanto");
    languageName = L"(nothing)";
    EXPECT_EQ(api.CLanguageName(7), L"");
    languageName = L"   ";
    EXPECT_EQ(api.CLanguageName(7), L"");
}

TEST_F(LanguageNames, SystemHasNoName_ReturnsEmptyText) {
    const ImportHook names("VerLanguageNameW", &LanguageName);
    languageName = nullptr;
    EXPECT_EQ(api.CLanguageName(7), L"");
    EXPECT_FALSE(api.LanguageIsArabic());
}

TEST_F(LanguageNames, WinLocalLanguage_IsTheDefaultLanguage) {
    EXPECT_EQ(api.WinLocalLanguage(), api.CLanguageName(GetSystemDefaultLangID()));
    const ImportHook names("VerLanguageNameW", &LanguageName);
    (void)api.WinLocalLanguage();
    EXPECT_EQ(askedLanguages, std::vector<DWORD>{GetSystemDefaultLangID()});
}

TEST_F(LanguageNames, GetActiveLanguage_UsesTheWholeLayoutNumber) {
    const ImportHook layouts("GetKeyboardLayoutNameW", &LayoutName);
    const ImportHook names("VerLanguageNameW", &LanguageName);
    layoutName = L"00010401";
    languageName = L"Arabic (Saudi Arabia)";
    EXPECT_EQ(api.GetActiveLanguage(), L"Arabic");
    layoutName = L"A0000409";
    (void)api.GetActiveLanguage();
    EXPECT_EQ(askedLanguages, (std::vector<DWORD>{0x10401, 0xA0000409}));
}

TEST_F(LanguageNames, UnknownKeyboard_IsNotArabic) {
    const ImportHook layouts("GetKeyboardLayoutNameW", &LayoutName);
    layoutName = nullptr;
    EXPECT_FALSE(api.LanguageIsArabic());
}

TEST_F(LanguageNames, LanguageIsArabic_TwoNamesOnly_ReturnsTrue) {
    EXPECT_TRUE(IsArabicWhenNamed(L"العربية"));
    EXPECT_TRUE(IsArabicWhenNamed(L"العربية (المملكة العربية السعودية)"));
    EXPECT_TRUE(IsArabicWhenNamed(L"LanguageIsArabic"));
    EXPECT_TRUE(IsArabicWhenNamed(L"LANGUAGEISARABIC (x)"));
    EXPECT_FALSE(IsArabicWhenNamed(L"Arabic (Egypt)"));
    EXPECT_FALSE(IsArabicWhenNamed(L"اللغة العربية"));
    EXPECT_FALSE(IsArabicWhenNamed(L""));
}

TEST_F(LanguageNames, SwitchToArabic_NoArabicLayout_StopsAfterFive) {
    arabicAfter = 100;
    AskFor(true);
    // The layout before, for this thread alone.
    const std::vector<std::pair<HKL, UINT>> five(5, {nullptr, 0});
    EXPECT_EQ(switches, five);
}

TEST_F(LanguageNames, SwitchToArabic_StopsAtTheFirstArabicLayout) {
    arabicAfter = 3;
    AskFor(true);
    EXPECT_EQ(switches.size(), 3U);
}

TEST_F(LanguageNames, SwitchToArabic_FifthLayoutIsArabic_IsFound) {
    arabicAfter = 5;
    AskFor(true);
    EXPECT_EQ(switches.size(), 5U);
}

TEST_F(LanguageNames, SwitchFromArabic_TriesFiveLayouts) {
    AskFor(false);
    EXPECT_EQ(switches.size(), 5U);
}

TEST_F(LanguageNames, LanguageIsActive_ChecksTheDigits_DoesNotSwitch) {
    digits.Set(L"1");
    boxes.Expect(L"");
    AskFor(true);
    arabicAfter = 100;
    boxes.Expect(L"");
    AskFor(false);
    EXPECT_TRUE(switches.empty());
}

TEST_F(LanguageNames, SwitchToArabic_RealKeyboard_WarnsAboutDigitsOnly) {
    digits.Set(L"1");
    boxes.Expect(L"");
    api.LanguageIsArabic(true);
}

TEST_F(LanguageNames, DigitWarning_HasThreeLinesFromRightToLeft) {
    digits.Set(L"1");
    boxes.Expect(L"");
    AskFor(true);
    ASSERT_EQ(boxes.Shown().size(), 1U);
    const MessageBoxRequest& box = boxes.Shown().front();
    EXPECT_EQ(box.text,
              L"إن نمط الأرقام المستعمل غير صالح:\r\n"
              L"من قائمة ابدأ اختر إعدادات- لوحة التحكم- إعدادات إقليمية\r\n"
              L"ثم انقر لسان التبويب {الرقم} ثم غير نمط الأرقام إلى موضعية أو إلى السياق.");
    EXPECT_EQ(box.title, kApplicationTitle);
    EXPECT_EQ(box.buttons, BoxButtons::Ok);
    EXPECT_EQ(box.icon, BoxIcon::None);
    EXPECT_TRUE(box.rightToLeft);
}

TEST_F(LanguageNames, OtherDigits_ShowNoWarning) {
    for (const std::wstring_view shape : {L"0", L"2", L"11", L"x", L""}) {
        digits.Set(shape);
        AskFor(true);
    }
    digits.Remove();
    AskFor(true);
}

}  // namespace
}  // namespace vw::test
