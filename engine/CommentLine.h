#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "fsutil/WorkingName.h"
#include "platform/Date.h"

namespace vw {

/// One-character separators for dates in comments.
struct DateSeparators {
    wchar_t date = L'/';
    wchar_t time = L':';
};

/// The separator to use for a locale's separator text: its first visible 7-bit character that is no
/// digit, else `fallback`. Bidi marks and blanks are thus passed over. Comments are read by
/// position, so a separator of two characters would make every item look changed on every run; so
/// would an apostrophe, which begins an encoded run.
[[nodiscard]] wchar_t OneCharacterSeparator(std::wstring_view localeText, wchar_t fallback);

/// Date as comments hold it: dd/mm/yyyy-hh:mm:ss, ASCII digits. A date beyond kFirstDate and
/// kLastDate is given as these, since another length would shift the positions.
[[nodiscard]] std::wstring CommentDateText(Date date, const DateSeparators& separators);

/// The one line of a comment file. `encodedLocation` is the item's parent folder after
/// EnglishNameFrom.
[[nodiscard]] std::wstring CommentLine(Date newestDate, const DateSeparators& separators,
                                       std::wstring_view encodedLocation);

/// Text after the label "Backed Files Date Last Modified:" in any letter case; nothing when the
/// line has no such label (or no comment exists).
[[nodiscard]] std::optional<std::wstring> CommentDateField(std::wstring_view line);

/// The date that a field holds at its fixed positions. A damaged field gives whatever its digits
/// give; throws error 5 when that is no date at all.
[[nodiscard]] Date ReadCommentDate(std::wstring_view field);

/// Encoded folder after the label "Original Location:", to the end of the line; nothing when the
/// label is missing.
[[nodiscard]] std::optional<std::wstring> CommentLocationField(std::wstring_view line);

/// The whole text of a comment file: the line, and below it the marks of a copy that is not whole.
/// Every reader of the line stops at its end.
[[nodiscard]] std::wstring CommentText(std::wstring_view line, Completeness completeness);

/// The completeness that the text of a comment file states. Text without marks, as earlier versions
/// write it, states a whole copy; marks of a later version, one that misses files.
[[nodiscard]] Completeness CompletenessOf(std::wstring_view commentText);

/// The first line of a comment file's text: up to the first CR or LF.
[[nodiscard]] std::wstring FirstLine(std::wstring_view text);

}  // namespace vw
