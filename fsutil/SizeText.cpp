#include "fsutil/SizeText.h"

#include <cmath>

namespace vw {
namespace {

constexpr float kKilo = 1024.0F;
constexpr float kMega = 1048576.0F;

/// Tenths are exact here: the quotient keeps the 24 bits of a single, times ten fits a double.
std::wstring OneDecimal(double number, wchar_t decimalSign) {
    const long long tenths = std::llround(number * 10.0);
    std::wstring text = std::to_wstring(tenths / 10);
    text += decimalSign;
    text += std::to_wstring(tenths % 10);
    return text;
}

}  // namespace

std::wstring SizeText(std::uint64_t bytes, wchar_t decimalSign) {
    const auto size = static_cast<float>(bytes);
    if (size > kMega) {
        return OneDecimal(double{size} / kMega, decimalSign) + L"MByte";
    }
    if (size > kKilo) {
        return OneDecimal(double{size} / kKilo, decimalSign) + L"KByte";
    }
    return std::to_wstring(bytes) + L"Byte";
}

}  // namespace vw
