#include "list/format/ListLine.h"

#include <algorithm>

#include "platform/TextCase.h"

namespace vw {
namespace {

bool HasKey(std::wstring_view field, std::wstring_view key) noexcept {
    return field.size() > key.size() && field[key.size()] == L':' &&
           EqualNoCase(field.substr(0, key.size()), key);
}

/// Behind the key two characters go, whatever they are: the writer puts a colon and a blank there.
std::wstring ValueOf(std::wstring_view field, std::wstring_view key) {
    return std::wstring(field.substr(std::min(key.size() + 2, field.size())));
}

}  // namespace

ListLine ReadListLine(std::wstring_view field) {
    if (field.empty()) {
        return {ListLineKind::Empty, {}};
    }
    if (HasKey(field, kBackupToKey)) {
        return {ListLineKind::Destination, ValueOf(field, kBackupToKey)};
    }
    if (HasKey(field, kBackagesKey)) {
        return {ListLineKind::CopiesCount, ValueOf(field, kBackagesKey)};
    }
    return {ListLineKind::Item, std::wstring(field)};
}

ItemKind ItemKindOf(std::wstring_view path) noexcept {
    if (path.ends_with(L'*')) {
        return ItemKind::Rule;
    }
    return path.ends_with(L'\\') ? ItemKind::Folder : ItemKind::File;
}

std::wstring CompleteDestination(std::wstring_view value) {
    std::wstring destination(value);
    if (destination.size() < 3) {
        destination += L"\\Backup";
    }
    return destination;
}

}  // namespace vw
