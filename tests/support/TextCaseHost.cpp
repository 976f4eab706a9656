// Stands in for the system's table of capital letters when the pure files are built natively.
#include <locale.h>
#include <wctype.h>

#include "platform/TextCase.h"

namespace vw {
namespace {

/// Kept for the life of the program.
locale_t Utf8Locale() noexcept {
    static const locale_t locale = ::newlocale(LC_CTYPE_MASK, "C.UTF-8", nullptr);
    return locale;
}

}  // namespace

wchar_t UpperCase(wchar_t character) noexcept {
    const locale_t locale = Utf8Locale();
    if (locale == nullptr || character < 0 || character > 0xFFFF) {
        return character;
    }
    return static_cast<wchar_t>(::towupper_l(static_cast<wint_t>(character), locale));
}

}  // namespace vw
