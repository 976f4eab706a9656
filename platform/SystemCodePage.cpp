#include "platform/SystemCodePage.h"

#include <limits>

#include "platform/RuntimeError.h"
#include "platform/WindowsHeader.h"

namespace vw {
namespace {

constexpr unsigned kGb18030 = 54936;

// The Unicode encodings hold every character, and the call refuses a stand-in character for them.
bool HoldsEverything(unsigned number) {
    return number == CP_UTF8 || number == CP_UTF7 || number == kGb18030;
}

int CheckedLength(std::size_t length) {
    if (length > static_cast<std::size_t>(std::numeric_limits<int>::max())) {
        Raise(error_number::kOutOfMemory);
    }
    return static_cast<int>(length);
}

}  // namespace

CodePage::CodePage(unsigned number) : number_(number == CP_ACP ? GetACP() : number) {
    if (!IsValidCodePage(number_)) Raise(error_number::kInvalidCall);
}

std::string CodePage::Encode(std::wstring_view text) const {
    if (text.empty()) return {};

    // Best fit would turn a letter into its look-alike: another file name, silently.
    const bool all = HoldsEverything(number_);
    const DWORD flags = all ? 0 : WC_NO_BEST_FIT_CHARS;
    const char* const standIn = all ? nullptr : "?";
    const int length = CheckedLength(text.size());

    const int size =
        WideCharToMultiByte(number_, flags, text.data(), length, nullptr, 0, standIn, nullptr);
    if (size <= 0) Raise(error_number::kOutOfMemory);
    std::string bytes(static_cast<std::size_t>(size), '\0');
    WideCharToMultiByte(number_, flags, text.data(), length, bytes.data(), size, standIn, nullptr);
    return bytes;
}

std::wstring CodePage::Decode(std::string_view bytes) const {
    if (bytes.empty()) return {};

    const int length = CheckedLength(bytes.size());
    const int size = MultiByteToWideChar(number_, 0, bytes.data(), length, nullptr, 0);
    std::wstring text(static_cast<std::size_t>(size), L'\0');
    MultiByteToWideChar(number_, 0, bytes.data(), length, text.data(), size);
    return text;
}

}  // namespace vw
