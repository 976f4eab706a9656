#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>

#include "platform/AnsiCodec.h"

namespace vw {

/// The text of a list file: UTF-8 when the bytes begin with its mark, else the ANSI code page.
/// Never fails, whatever the bytes are (bad UTF-8 gives U+FFFD).
[[nodiscard]] std::wstring DecodeList(std::string_view bytes, const AnsiCodec& ansi);

/// The bytes of a list file: the destination line, the copies line, then one line per item, each
/// ended by CR LF. ANSI as long as every line survives it; else UTF-8 with its mark, since a path
/// that became "?" would silently drop out of the user's backup.
[[nodiscard]] std::string EncodeList(std::wstring_view destination, std::int16_t copiesCount,
                                     std::span<const std::wstring> items, const AnsiCodec& ansi);

}  // namespace vw
