#pragma once

#include <string>
#include <string_view>

#include "platform/AnsiCodec.h"

namespace vw {

/// A folder name in 7-bit characters for the comment file. A run of characters beyond them is put
/// between apostrophes as two upper-case hexadecimal digits per ANSI byte; a run at the end of the
/// text stays open. A character that the code page does not have is written in the run as four
/// pairs "u" and a digit, one pair for each hexadecimal digit of its UTF-16 unit, so that it comes
/// back too (a "?" would make the folder unknown and every run allot a new location number).
[[nodiscard]] std::wstring EnglishNameFrom(std::wstring_view name, const AnsiCodec& ansi);

/// The name that was encoded. Pairs that fit neither form are dropped; a digit alone at the end
/// counts as a byte. An apostrophe of the name itself is not distinguished, so such a name does not
/// come back. Never fails.
[[nodiscard]] std::wstring EnglishNameOrigin(std::wstring_view text, const AnsiCodec& ansi);

}  // namespace vw
