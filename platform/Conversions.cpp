#include "platform/Conversions.h"

#include <optional>
#include <string>

#include "platform/RuntimeError.h"
#include "platform/WindowsHeader.h"

// Needs the declarations of the system first.
#include <oleauto.h>

namespace vw {
namespace {

// What settings hold most of the time: a few digits, with "-" before them or not. They mean the
// same to every user, so the locale library need not be loaded for
// them.
std::optional<std::int16_t> PlainNumber(std::wstring_view text) {
    constexpr std::size_t kMostDigits = 4;
    const bool negative = text.starts_with(L'-');
    if (negative) text.remove_prefix(1);
    if (text.empty() || text.size() > kMostDigits) return std::nullopt;
    int number = 0;
    for (const wchar_t digit : text) {
        if (digit < L'0' || digit > L'9') return std::nullopt;
        number = number * 10 + (digit - L'0');
    }
    return static_cast<std::int16_t>(negative ? -number : number);
}

void Check(HRESULT result) {
    if (SUCCEEDED(result)) return;
    switch (result) {
        case DISP_E_OVERFLOW:
            Throw(error_number::kOverflow);
        case E_OUTOFMEMORY:
            Throw(error_number::kOutOfMemory);
        default:
            Throw(error_number::kTypeMismatch);
    }
}

}  // namespace

std::int16_t ParseInt16(std::wstring_view text) {
    if (const auto plain = PlainNumber(text)) return *plain;
    std::wstring copy(text);
    SHORT number = 0;
    Check(VarI2FromStr(copy.data(), LOCALE_USER_DEFAULT, 0, &number));
    return number;
}

bool ParseBool(std::wstring_view text) {
    if (const auto plain = PlainNumber(text)) return *plain != 0;
    std::wstring copy(text);
    VARIANT_BOOL flag = VARIANT_FALSE;
    Check(VarBoolFromStr(copy.data(), LOCALE_USER_DEFAULT, 0, &flag));
    return flag != VARIANT_FALSE;
}

}  // namespace vw
