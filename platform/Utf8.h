#pragma once

#include <string>
#include <string_view>

namespace vw {

/// UTF-16 units of UTF-8 bytes; U+FFFD for each part that is no UTF-8. Single surrogates
/// are taken as they are: names on a Windows disk can hold them. Never fails.
[[nodiscard]] std::wstring FromUtf8(std::string_view bytes);

/// UTF-8 bytes of UTF-16 units; single surrogates are written like other characters.
[[nodiscard]] std::string ToUtf8(std::wstring_view text);

}  // namespace vw
