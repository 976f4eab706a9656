#include <algorithm>
#include <cwchar>

#include "platform/CCommonAPI.h"
#include "platform/MessageBoxes.h"
#include "platform/TextCase.h"

namespace vw {
namespace {

constexpr int kMostSwitches = 5;

// The digits of the user's number format: 0 by context, 1 never Arabic, 2 national.
constexpr std::wstring_view kNumberFormatKey = L"Control Panel\\International";
constexpr std::wstring_view kNeverArabicDigits = L"1";

constexpr std::wstring_view kDigitWarning =
    L"إن نمط الأرقام المستعمل غير صالح:\r\n"
    L"من قائمة ابدأ اختر إعدادات- لوحة التحكم- إعدادات إقليمية\r\n"
    L"ثم انقر لسان التبويب {الرقم} ثم غير نمط الأرقام إلى موضعية أو إلى السياق.";

std::wstring Trimmed(std::wstring_view text) {
    const std::size_t first = text.find_first_not_of(L' ');
    if (first == std::wstring_view::npos) return {};
    return std::wstring(text.substr(first, text.find_last_not_of(L' ') - first + 1));
}

}  // namespace

std::wstring CCommonAPI::CLanguageName(std::uint32_t languageIdentifier) {
    return trap_.Or(std::wstring(), L"CLanguageName", [&] {
        std::wstring name(256, L' ');
        const DWORD length =
            VerLanguageNameW(languageIdentifier, name.data(), static_cast<DWORD>(name.size()));
        name.resize(std::min<std::size_t>(length, name.size()));
        return Trimmed(std::wstring_view(name).substr(0, name.find(L'(')));
    });
}

// The whole layout number is passed on: some layouts carry more than their language in it.
std::wstring CCommonAPI::GetActiveLanguage() {
    return trap_.Or(std::wstring(), L"GetActiveLanguage", [&] {
        std::wstring layout(20, L' ');
        GetKeyboardLayoutNameW(layout.data());
        return CLanguageName(static_cast<std::uint32_t>(std::wcstoul(layout.c_str(), nullptr, 16)));
    });
}

std::wstring CCommonAPI::WinLocalLanguage() {
    return trap_.Or(std::wstring(), L"WinLocalLanguage",
                    [&] { return CLanguageName(GetSystemDefaultLangID()); });
}

bool CCommonAPI::LanguageIsArabic() {
    return trap_.Or(false, L"LanguageIsArabic", [&] {
        const std::wstring language = GetActiveLanguage();
        return EqualNoCase(language, L"العربية") || EqualNoCase(language, L"LanguageIsArabic");
    });
}

void CCommonAPI::LanguageIsArabic(bool wanted) {
    trap_(L"LanguageIsArabic", [&] {
        bool active = LanguageIsArabic();
        for (int left = kMostSwitches; left > 0 && active != wanted; --left) {
            ActivateKeyboardLayout(reinterpret_cast<HKL>(HKL_PREV), 0);
            active = LanguageIsArabic();
        }
        const std::wstring shape =
            RegValue(HKEY_CURRENT_USER, kNumberFormatKey, L"NumShape", REG_SZ);
        if (shape == kNeverArabicDigits) {
            boxes_.Show({.text = std::wstring(kDigitWarning), .rightToLeft = true});
        }
    });
}

}  // namespace vw
