#include "list/format/FieldReader.h"

#include <algorithm>

namespace vw {
namespace {

constexpr std::wstring_view kBlanks = L" \t";
constexpr std::wstring_view kSeparators = L",\r\n";
constexpr wchar_t kEndOfText = 0x1A;  // Ctrl-Z

}  // namespace

FieldReader::FieldReader(std::wstring_view text) noexcept
    : text_(text.substr(0, text.find(kEndOfText))) {}

bool FieldReader::AtEnd() const noexcept { return position_ >= text_.size(); }

std::wstring FieldReader::Next() {
    SkipBlanks();
    std::size_t begin = position_;
    std::size_t end = 0;
    if (!AtEnd() && text_[position_] == L'"') {
        ++begin;
        end = std::min(text_.find(L'"', begin), text_.size());
        position_ = end;
    } else {
        end = std::min(text_.find_first_of(kSeparators, begin), text_.size());
    }
    position_ = std::min(text_.find_first_of(kSeparators, position_), text_.size());
    StepOverSeparator();
    return std::wstring(text_.substr(begin, end - begin));
}

void FieldReader::SkipBlanks() noexcept {
    position_ = std::min(text_.find_first_not_of(kBlanks, position_), text_.size());
}

void FieldReader::StepOverSeparator() noexcept {
    if (AtEnd()) {
        return;
    }
    const bool isCarriageReturn = text_[position_] == L'\r';
    ++position_;
    if (isCarriageReturn && !AtEnd() && text_[position_] == L'\n') {
        ++position_;
    }
}

}  // namespace vw
