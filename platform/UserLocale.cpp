#include "platform/UserLocale.h"

#include <array>

#include "platform/WindowsHeader.h"

namespace vw {

namespace {

std::wstring LocaleText(LCTYPE type) {
    std::array<wchar_t, 16> text{};
    const int length =
        GetLocaleInfoEx(LOCALE_NAME_USER_DEFAULT, type, text.data(), static_cast<int>(text.size()));
    return length == 0 ? std::wstring() : std::wstring(text.data());
}

}  // namespace

std::wstring UserDateSeparator() { return LocaleText(LOCALE_SDATE); }

std::wstring UserTimeSeparator() { return LocaleText(LOCALE_STIME); }

std::wstring UserDecimalSign() { return LocaleText(LOCALE_SDECIMAL); }

int CompareForUser(std::wstring_view left, std::wstring_view right) {
    const int order = CompareStringEx(LOCALE_NAME_USER_DEFAULT, NORM_IGNORECASE, left.data(),
                                      static_cast<int>(left.size()), right.data(),
                                      static_cast<int>(right.size()), nullptr, nullptr, 0);
    return order == 0 ? 0 : order - CSTR_EQUAL;
}

}  // namespace vw
