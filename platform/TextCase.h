#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace vw {

/// The upper-case form of one UTF-16 unit by the system's language-independent table, so that
/// paths compare alike on English, Turkish and Arabic systems.
[[nodiscard]] wchar_t UpperCase(wchar_t character) noexcept;

/// `text` with every unit in upper case: the key under which names are looked up.
[[nodiscard]] std::wstring UpperCase(std::wstring_view text);

/// Whether two paths, keys or switches are the same but for case.
[[nodiscard]] bool EqualNoCase(std::wstring_view left, std::wstring_view right) noexcept;

/// Position (from 0) of the first `part` in `text` without regard to case; npos when it is absent.
[[nodiscard]] std::size_t FindNoCase(std::wstring_view text, std::wstring_view part) noexcept;

}  // namespace vw
