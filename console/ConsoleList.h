#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "list/format/ListLine.h"

namespace vw {

class Console;

/// One item of a backup list, with what holds for it there.
struct ConsoleItem {
    std::wstring line;  ///< as the list names it
    std::wstring path;  ///< without the "\*" of a rule
    ItemKind kind = ItemKind::File;
    std::wstring destination;
    std::int16_t copiesCount = 0;

    [[nodiscard]] bool IsFolder() const noexcept { return kind != ItemKind::File; }
};

/// A backup list as the engine reads it.
struct ConsoleList {
    std::wstring path;
    std::vector<ConsoleItem> items;
    std::vector<std::wstring> destinations;  ///< each one once, in the order of the list
};

/// Whether a path is named like a backup list.
[[nodiscard]] bool IsListPath(std::wstring_view path);

/// Reads a list and changes nothing: other than the window, it makes no list that is missing.
/// Throws 4008 when there is none, 13 when the file is no backup list, and what the disk throws.
[[nodiscard]] ConsoleList ReadConsoleList(Console& console, std::wstring_view path);

}  // namespace vw
