#include "platform/Conversions.h"

#include <string>

#include "platform/RuntimeError.h"
#include "platform/WindowsHeader.h"

// Needs the declarations of the system first.
#include <oleauto.h>

namespace vw {
namespace {

void Check(HRESULT result) {
    if (SUCCEEDED(result)) return;
    switch (result) {
        case DISP_E_OVERFLOW:
            Raise(error_number::kOverflow);
        case E_OUTOFMEMORY:
            Raise(error_number::kOutOfMemory);
        default:
            Raise(error_number::kTypeMismatch);
    }
}

}  // namespace

std::int16_t CInt(std::wstring_view text) {
    std::wstring copy(text);
    SHORT number = 0;
    Check(VarI2FromStr(copy.data(), LOCALE_USER_DEFAULT, 0, &number));
    return number;
}

bool CBool(std::wstring_view text) {
    std::wstring copy(text);
    VARIANT_BOOL flag = VARIANT_FALSE;
    Check(VarBoolFromStr(copy.data(), LOCALE_USER_DEFAULT, 0, &flag));
    return flag != VARIANT_FALSE;
}

}  // namespace vw
