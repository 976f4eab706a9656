#include "engine/CopyLabel.h"

#include <algorithm>

#include "fsutil/PathText.h"
#include "platform/LeadingInt.h"

namespace vw {
namespace {

constexpr int kLastRotating = 20;

}  // namespace

std::wstring CopyLabel(int copyNumber) {
    return copyNumber <= kLastRotating ? L"N" + TwoDigits(copyNumber)
                                       : L"U" + TwoDigits(copyNumber - kLastRotating);
}

bool IsSafetyLabel(std::wstring_view label) noexcept { return label.starts_with(L'U'); }

int NumberOfLabel(std::wstring_view label) {
    const std::wstring_view digits = label.size() > 2 ? label.substr(label.size() - 2) : label;
    const int number = ParseLeadingInt(digits);
    return IsSafetyLabel(label) ? number + kLastRotating : number;
}

int NextSafetyNumber(int highest) noexcept { return std::max(highest, kLastRotating) + 1; }

}  // namespace vw
