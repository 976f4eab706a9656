#include "platform/SystemError.h"

#include <array>

#include "platform/RuntimeError.h"
#include "platform/WindowsHeader.h"

namespace vw {

void RaiseCode(std::uint32_t systemCode, std::wstring_view path, const SourceLocation& where) {
    const int number = ErrorNumberOf(systemCode);
    throw RuntimeError(number, DescriptionOf(number), std::wstring(path), where.line(), systemCode);
}

void RaiseLast(std::wstring_view path, const SourceLocation& where) {
    RaiseCode(GetLastError(), path, where);
}

std::wstring SystemText(const RuntimeError& error) {
    std::array<wchar_t, 512> text{};
    const DWORD length =
        error.SystemCode() == 0
            ? 0
            : FormatMessageW(FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS, nullptr,
                             error.SystemCode(), 0, text.data(), static_cast<DWORD>(text.size()),
                             nullptr);
    std::wstring sentence(text.data(), length);
    while (!sentence.empty() && (sentence.back() == L'\n' || sentence.back() == L'\r')) {
        sentence.pop_back();
    }
    return sentence.empty() ? error.Description() : sentence;
}

}  // namespace vw
