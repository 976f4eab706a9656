#include "console/ConsoleList.h"

#include <algorithm>

#include "console/Console.h"
#include "list/format/CopiesCount.h"
#include "list/format/FieldReader.h"
#include "list/format/ListText.h"
#include "platform/FileSystem.h"
#include "platform/RuntimeError.h"
#include "platform/TextCase.h"

namespace vw {
namespace {

constexpr std::wstring_view kListExtension = L".vwl";
constexpr wchar_t kEndOfText = 0x1A;

// A picture or a program that was renamed: no path holds such characters.
bool IsText(std::wstring_view text) {
    return std::ranges::all_of(text.substr(0, text.find(kEndOfText)), [](wchar_t unit) {
        return unit >= L' ' || unit == L'\t' || unit == L'\r' || unit == L'\n';
    });
}

}  // namespace

bool IsListPath(std::wstring_view path) {
    return path.size() > kListExtension.size() &&
           EqualNoCase(path.substr(path.size() - kListExtension.size()), kListExtension);
}

ConsoleList ReadConsoleList(Console& console, std::wstring_view path) {
    ConsoleList list{.path = console.FullPath(path), .items = {}, .destinations = {}};
    const auto facts = console.system.files.Stat(list.path);
    if (!facts || facts->isFolder) {
        ThrowWith(error_number::kListPathMissing, L"There is no such backup list", list.path);
    }
    const std::wstring text = DecodeList(console.system.files.Read(list.path), console.system.ansi);
    if (!IsListPath(list.path) || !IsText(text)) {
        ThrowWith(error_number::kTypeMismatch, L"The file is no backup list (.vwl)", list.path);
    }
    std::wstring destination = console.state.BackupTo;
    std::int16_t copiesCount = console.state.copiesCount;
    FieldReader fields(text);
    while (!fields.AtEnd()) {
        ListLine line = ReadListLine(fields.Next());
        if (line.kind == ListLineKind::Destination) {
            destination = line.value;
        } else if (line.kind == ListLineKind::CopiesCount) {
            TakeCopiesCount(line.value, copiesCount);
        } else if (line.kind == ListLineKind::Item) {
            ConsoleItem item{line.value, line.value, ItemKindOf(line.value), destination,
                             copiesCount};
            if (item.path.ends_with(L"\\*")) item.path.resize(item.path.size() - 2);
            list.items.push_back(std::move(item));
        }
        const bool isKnown = std::ranges::any_of(
            list.destinations, [&](const auto& known) { return EqualNoCase(known, destination); });
        const bool names =
            line.kind == ListLineKind::Destination || line.kind == ListLineKind::Item;
        if (names && !isKnown) list.destinations.push_back(destination);
    }
    return list;
}

}  // namespace vw
