#include "platform/SystemCodePage.h"

#include <limits>

#include "platform/RuntimeError.h"
#include "platform/WindowsHeader.h"

namespace vw {
namespace {

constexpr unsigned kGb18030 = 54936;

// The Unicode encodings hold every character, and the call refuses a replacement character for
// them.
bool HoldsEverything(unsigned number) {
    return number == CP_UTF8 || number == CP_UTF7 || number == kGb18030;
}

int CheckedLength(std::size_t length) {
    if (length > static_cast<std::size_t>(std::numeric_limits<int>::max())) {
        Throw(error_number::kOutOfMemory);
    }
    return static_cast<int>(length);
}

}  // namespace

unsigned CodePage::OfSystemLanguage() noexcept {
    DWORD number = 0;
    const int units =
        GetLocaleInfoW(LOCALE_SYSTEM_DEFAULT, LOCALE_IDEFAULTANSICODEPAGE | LOCALE_RETURN_NUMBER,
                       reinterpret_cast<wchar_t*>(&number), sizeof number / sizeof(wchar_t));
    return units == 0 ? 0 : number;
}

CodePage::CodePage(unsigned number, unsigned before)
    : number_(number == CP_ACP ? GetACP() : number), before_(before) {
    if (!IsValidCodePage(number_)) Throw(error_number::kInvalidCall);
}

bool CodePage::IsUnicode() const { return HoldsEverything(number_); }

std::string CodePage::Encode(std::wstring_view text) const {
    if (text.empty()) return {};

    // Best fit would turn a letter into its look-alike: another file name, silently.
    const bool all = HoldsEverything(number_);
    const DWORD flags = all ? 0 : WC_NO_BEST_FIT_CHARS;
    const char* const standIn = all ? nullptr : "?";
    const int length = CheckedLength(text.size());

    const int size =
        WideCharToMultiByte(number_, flags, text.data(), length, nullptr, 0, standIn, nullptr);
    if (size <= 0) Throw(error_number::kOutOfMemory);
    std::string bytes(static_cast<std::size_t>(size), '\0');
    WideCharToMultiByte(number_, flags, text.data(), length, bytes.data(), size, standIn, nullptr);
    return bytes;
}

std::wstring CodePage::Decode(std::string_view bytes) const {
    if (bytes.empty()) return {};

    const int length = CheckedLength(bytes.size());
    const auto decode = [&](unsigned number, DWORD flags) {
        const int size = MultiByteToWideChar(number, flags, bytes.data(), length, nullptr, 0);
        std::wstring text(static_cast<std::size_t>(size), L'\0');
        MultiByteToWideChar(number, flags, bytes.data(), length, text.data(), size);
        return text;
    };
    if (number_ == CP_UTF8 && before_ != 0 && before_ != CP_UTF8) {
        const std::wstring text = decode(number_, MB_ERR_INVALID_CHARS);
        return text.empty() ? decode(before_, 0) : text;
    }
    return decode(number_, 0);
}

}  // namespace vw
