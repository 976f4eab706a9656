#include "engine/CommentLine.h"

#include <algorithm>
#include <cstddef>

#include "platform/Digits.h"
#include "platform/LeadingInt.h"
#include "platform/TextCase.h"

namespace vw {
namespace {

constexpr std::wstring_view kDateLabel = L"Backed Files Date Last Modified:";
constexpr std::wstring_view kLocationLabel = L"Original Location:";

/// Marks a copy that is not whole, on the second line of its comment file.
constexpr std::wstring_view kIncompleteMark = L"Incomplete";

/// States on the third line that a cancel is the reason.
constexpr std::wstring_view kCutShortMark = L"Cancelled";

constexpr std::wstring_view kLineEnd = L"\r\n";

/// Stands between date and time in every comment.
constexpr wchar_t kDayEnd = L'-';

/// Begins a run of encoded characters: the reader of the date would take what follows for one.
constexpr wchar_t kRunMark = L'\'';

bool CanSeparate(wchar_t character) noexcept {
    const bool isVisible = character > L' ' && character < 0x7F;
    return isVisible && !IsDigit(character) && character != kRunMark;
}

/// A year from 100 to 9999.
std::wstring FourDigits(int year) {
    std::wstring digits = std::to_wstring(year);
    digits.insert(0, 4 - digits.size(), L'0');
    return digits;
}

std::optional<std::wstring> TextAfter(std::wstring_view line, std::wstring_view label) {
    const std::size_t place = FindNoCase(line, label);
    if (place == std::wstring_view::npos) {
        return std::nullopt;
    }
    return std::wstring(line.substr(place + label.size()));
}

/// The number in the characters `from` to `to` of a field, counted from 1.
int ValueAt(std::wstring_view field, std::size_t from, std::size_t to) noexcept {
    if (from > field.size()) {
        return 0;
    }
    return ParseLeadingInt(field.substr(from - 1, to - from + 1));
}

}  // namespace

wchar_t OneCharacterSeparator(std::wstring_view localeText, wchar_t fallback) {
    const auto found = std::find_if(localeText.begin(), localeText.end(), CanSeparate);
    return found == localeText.end() ? fallback : *found;
}

std::wstring CommentDateText(Date date, const DateSeparators& separators) {
    const DateParts parts = PartsOf(std::clamp(date, kFirstDate, kLastDate));
    std::wstring text = TwoDigits(parts.day);
    text += separators.date;
    text += TwoDigits(parts.month);
    text += separators.date;
    text += FourDigits(parts.year);
    text += kDayEnd;
    text += TwoDigits(parts.hour);
    text += separators.time;
    text += TwoDigits(parts.minute);
    text += separators.time;
    text += TwoDigits(parts.second);
    return text;
}

std::wstring CommentLine(Date newestDate, const DateSeparators& separators,
                         std::wstring_view encodedLocation) {
    std::wstring line(kDateLabel);
    line += CommentDateText(newestDate, separators);
    line += L'+';
    line += kLocationLabel;
    line += encodedLocation;
    return line;
}

std::optional<std::wstring> CommentDateField(std::wstring_view line) {
    return TextAfter(line, kDateLabel);
}

Date ReadCommentDate(std::wstring_view field) {
    DateParts parts;
    parts.day = ValueAt(field, 1, 2);
    parts.month = ValueAt(field, 4, 5);
    parts.year = ValueAt(field, 7, 10);
    parts.hour = ValueAt(field, 12, 13);
    parts.minute = ValueAt(field, 15, 16);
    parts.second = ValueAt(field, 18, 19);
    return MakeDate(parts);
}

std::optional<std::wstring> CommentLocationField(std::wstring_view line) {
    return TextAfter(line, kLocationLabel);
}

std::wstring CommentText(std::wstring_view line, Completeness completeness) {
    std::wstring text(line);
    text += kLineEnd;
    if (completeness == Completeness::Whole) return text;
    text.append(kIncompleteMark).append(kLineEnd);
    if (completeness == Completeness::CutShort) text.append(kCutShortMark).append(kLineEnd);
    return text;
}

Completeness CompletenessOf(std::wstring_view commentText) {
    const auto nextLine = [&commentText] {
        const std::size_t end = commentText.find_first_of(L"\r\n");
        if (end == std::wstring_view::npos) {
            commentText = {};
        } else {
            const bool isPair = commentText.substr(end, 2) == kLineEnd;
            commentText.remove_prefix(end + (isPair ? 2 : 1));
        }
        return FirstLine(commentText);
    };
    if (nextLine() != kIncompleteMark) return Completeness::Whole;
    return nextLine() == kCutShortMark ? Completeness::CutShort : Completeness::MissesFiles;
}

std::wstring FirstLine(std::wstring_view text) {
    return std::wstring(text.substr(0, text.find_first_of(L"\r\n")));
}

}  // namespace vw
