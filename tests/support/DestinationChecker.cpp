#include "tests/support/DestinationChecker.h"

#include <algorithm>
#include <cwchar>
#include <set>

#include "fsutil/PathText.h"
#include "platform/TextCase.h"
#include "platform/Utf8.h"
#include "platform/Win32FileSystem.h"

namespace vw::test {

namespace {

constexpr int kLocations = 12;
constexpr int kNumbers = 24;
constexpr std::wstring_view kDateLabel = L"Date Last Modified:";
constexpr std::wstring_view kLocationLabel = L"Original Location:";

std::wstring TwoDigitsOf(int number) {
    return (number < 10 ? L"0" : L"") + std::to_wstring(number);
}

// The grammar of copy names, written down once more so that a slip of the program is seen.
std::wstring CopyPath(const std::wstring& destination, const std::wstring& item, int location,
                      int number) {
    std::wstring path = destination + L"\\" + MFileDosShell::CFileFirstName(item) + L'\u00AB' +
                        TwoDigitsOf(location) + TwoDigitsOf(number) + L'\u00BB' +
                        MFileDosShell::CFileExt(item);
    while (path.ends_with(L'\\')) path.pop_back();
    return path;
}

Tree ContentOf(const std::wstring& path, bool isRule) {
    Win32FileSystem disk;
    if (!disk.Stat(path)->isFolder) return {{L"", {false, ReadBytes(path), ReadDate(path)}}};
    Tree tree = ReadTree(path);
    if (isRule) {
        std::erase_if(tree, [](const auto& node) {
            return node.second.isFolder || node.first.find(L'\\') != std::wstring::npos;
        });
    }
    return tree;
}

bool IsSame(const TreeNode& left, const TreeNode& right) {
    return left.isFolder == right.isFolder && left.bytes == right.bytes &&
           (left.isFolder || left.date == right.date);
}

// Whether `part` has nothing that `whole` does not have, and everything when it has to.
bool Agrees(const Tree& part, const Tree& whole, bool mayLack) {
    if (!mayLack && part.size() != whole.size()) return false;
    return std::ranges::all_of(part, [&](const auto& node) {
        const auto found = whole.find(node.first);
        return found != whole.end() && IsSame(node.second, found->second);
    });
}

struct Comment {
    bool isMarked = false;
    std::wstring folder;
    std::wstring date;  ///< digits only: ddmmyyyyhhmmss
};

std::wstring Wide(const std::string& bytes) { return {bytes.begin(), bytes.end()}; }

Comment ReadComment(const std::wstring& file) {
    const std::wstring text = Wide(ReadBytes(file));
    Comment comment;
    const std::wstring line = text.substr(0, text.find(L"\r\n"));
    comment.isMarked = text.find(L"\r\nIncomplete\r\n") != std::wstring::npos;
    const std::size_t date = line.find(kDateLabel);
    const std::size_t location = line.find(kLocationLabel);
    if (date == std::wstring::npos || location == std::wstring::npos) return comment;
    comment.folder = line.substr(location + kLocationLabel.size());
    for (const wchar_t character : line.substr(date + kDateLabel.size(), 19)) {
        if (character >= L'0' && character <= L'9') comment.date += character;
    }
    return comment;
}

std::wstring DigitsOf(Date date) {
    const DateParts parts = PartsOf(date);
    wchar_t text[32] = {};
    std::swprintf(text, std::size(text), L"%02d%02d%04d%02d%02d%02d", parts.day, parts.month,
                  parts.year, parts.hour, parts.minute, parts.second);
    return text;
}

}  // namespace

DestinationChecker::DestinationChecker(std::wstring destination)
    : destination_(std::move(destination)) {}

DestinationChecker::Item& DestinationChecker::Known(std::wstring_view item) {
    const bool isRule = item.ends_with(L"\\*");
    const std::wstring path(isRule ? item.substr(0, item.size() - 2) : item);
    auto found = std::ranges::find_if(
        items_, [&](const Item& known) { return EqualNoCase(known.path, path); });
    if (found == items_.end()) {
        items_.push_back({.path = path,
                          .folder = MFileDosShell::CFileLocation(path),
                          .isFile = !isRule && !item.ends_with(L'\\'),
                          .states = {}});
        found = items_.end() - 1;
    }
    return *found;
}

void DestinationChecker::Learn(std::wstring_view item) {
    Item& known = Known(item);
    const bool isRule = item.ends_with(L"\\*");
    std::wstring onDisk = known.path;
    while (onDisk.ends_with(L'\\')) onDisk.pop_back();
    if (!Exists(onDisk)) return;
    State state{.content = ContentOf(onDisk, isRule)};
    // A rule has the date of its whole folder.
    for (const auto& [name, node] : ContentOf(onDisk, false)) {
        if (!node.isFolder) state.newest = std::max(state.newest, node.date);
    }
    known.states.push_back(std::move(state));
}

void DestinationChecker::LearnState(std::wstring_view item, Tree content, Date newest) {
    Known(item).states.push_back({.content = std::move(content), .newest = newest});
}

void DestinationChecker::LearnAll(const std::vector<std::wstring>& items) {
    for (const std::wstring& item : items) Learn(item);
}

/// One name that copies of some items may have.
struct DestinationChecker::Copy {
    std::wstring path;
    int number = 0;
    std::wstring series;  ///< the name of copy 1
    std::vector<const Item*> items;
};

std::string DestinationChecker::Violations() const {
    std::map<std::wstring, Copy> copies;
    for (const Item& item : items_) {
        for (int location = 0; location < (item.isFile ? kLocations : 1); ++location) {
            for (int number = 1; number <= kNumbers; ++number) {
                const std::wstring path = CopyPath(destination_, item.path, location, number);
                if (!Exists(path)) continue;
                Copy& copy = copies[UpperCase(path)];
                copy.path = path;
                copy.number = number;
                copy.series = CopyPath(destination_, item.path, location, 1);
                copy.items.push_back(&item);
            }
        }
    }
    std::string violations;
    // The comment of a copy may have the name of a copy of "X.vwc".
    std::erase_if(copies, [&](const auto& entry) {
        const std::wstring& key = entry.first;
        return key.ends_with(L".VWC") && copies.contains(key.substr(0, key.size() - 4)) &&
               !Exists(entry.second.path + L".vwc");
    });
    std::map<std::wstring, std::wstring> owners;
    std::wstring whole;
    for (const auto& [key, copy] : copies) {
        // What lies in a whole copy is a part of it.
        if (!whole.empty() && key.starts_with(whole + L'\\')) continue;
        if (IsContainer(copy.path, copies)) continue;
        if (CheckCopy(copy, owners, violations)) whole = key;
    }
    return violations;
}

// Whether a folder holds nothing but copies of items below a dotted folder, and their comments.
bool DestinationChecker::IsContainer(const std::wstring& path,
                                     const std::map<std::wstring, Copy>& copies) {
    Win32FileSystem disk;
    if (!disk.Stat(path)->isFolder || Exists(path + L".vwc")) return false;
    std::vector<std::wstring> inner;
    for (const auto& [key, copy] : copies) {
        if (key.starts_with(UpperCase(path) + L'\\')) inner.push_back(key);
    }
    return !inner.empty() && std::ranges::all_of(ReadTree(path), [&](const auto& node) {
        if (node.second.isFolder) return true;
        const std::wstring file = UpperCase(path + L'\\' + node.first);
        return std::ranges::any_of(inner, [&](const std::wstring& copy) {
            return file == copy || file == copy + L".VWC" || file.starts_with(copy + L'\\');
        });
    });
}

bool DestinationChecker::CheckCopy(const Copy& copy, std::map<std::wstring, std::wstring>& owners,
                                   std::string& violations) const {
    const auto add = [&](const std::string& what) {
        violations += ToUtf8(copy.path) + ": " + what + "\n";
    };
    const Tree content = ContentOf(copy.path, false);
    const std::wstring commentFile = copy.path + L".vwc";
    const bool hasComment = copy.number == 1 && Exists(commentFile);
    const Comment comment = hasComment ? ReadComment(commentFile) : Comment();
    const bool mayLack = hasComment ? comment.isMarked : allowsPartialOlder_;
    std::set<std::wstring> holders;
    bool isFile = false;
    for (const Item* item : copy.items) {
        isFile = isFile || item->isFile;
        if (hasComment && !EqualNoCase(item->folder, comment.folder)) continue;
        const bool matches = std::ranges::any_of(item->states, [&](const State& state) {
            const bool isOfDate =
                !hasComment || state.newest == kNoDate || DigitsOf(state.newest) == comment.date;
            return isOfDate && Agrees(content, state.content, mayLack);
        });
        if (matches) holders.insert(UpperCase(item->path));
    }
    if (holders.empty()) {
        add(hasComment ? "is not what its comment states: " + ReadBytes(commentFile)
                       : "holds no state of its items");
        return false;
    }
    if (!isFile || holders.size() > 1) return true;
    const auto [owner, isFirst] = owners.emplace(UpperCase(copy.series), *holders.begin());
    if (!isFirst && owner->second != *holders.begin()) add("is of another item than its series");
    return true;
}

}  // namespace vw::test
