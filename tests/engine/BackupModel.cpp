#include "tests/engine/BackupModel.h"

#include <algorithm>

namespace vw::test {

namespace {

using Kind = BackupModel::Kind;

const Date kNothing = MakeDate({1000, 1, 1, 0, 0, 0});
const Date kNoFiles = MakeDate({1900, 1, 1, 0, 0, 0});

std::wstring Trimmed(std::wstring path) {
    if (path.ends_with(L'\\')) path.pop_back();
    return path;
}

std::wstring ParentOf(const std::wstring& path) {
    const std::wstring text = Trimmed(path);
    return text.substr(0, text.rfind(L'\\'));
}

std::wstring LastOf(const std::wstring& path) {
    const std::wstring text = Trimmed(path);
    return text.substr(text.rfind(L'\\') + 1);
}

std::wstring Digits(int number) { return (number < 10 ? L"0" : L"") + std::to_wstring(number); }

// The name of a copy, relative to the destination.
std::wstring NameOf(const std::wstring& path, int number, int location) {
    std::wstring first = LastOf(path);
    if (const std::size_t dot = first.rfind(L'.'); dot != std::wstring::npos) first.resize(dot);
    const std::size_t dot = path.rfind(L'.');
    const std::wstring extension = dot == std::wstring::npos ? L"" : path.substr(dot);
    return Trimmed(first + L"\u00AB" + Digits(location) + Digits(number) + L"\u00BB" + extension);
}

// The path that is copied: a rule without its "\*".
std::wstring CopiedPath(const BackupModel::Line& line) {
    return line.kind == Kind::Rule ? line.path.substr(0, line.path.size() - 2) : line.path;
}

// An apostrophe is taken for the mark of encoded letters, so such a folder is not found again.
bool ComesBack(const std::wstring& folder) { return folder.find(L'\'') == std::wstring::npos; }

}  // namespace

BackupModel::Expected BackupModel::Run(const std::wstring& root, const Tree& sources,
                                       const std::vector<Line>& list, int count) {
    root_ = root;
    sources_ = sources;
    Expected expected;
    for (const Line& line : list) RunLine(line, count, expected);
    std::sort(expected.messages.begin(), expected.messages.end());
    return expected;
}

int BackupModel::LocationOf(const Line& line) const {
    if (line.kind != Kind::File) return 0;
    for (int location = 0;; ++location) {
        const std::wstring name = NameOf(line.path, 1, location);
        const auto copy = copies.find(name);
        const auto comment = comments.find(name);
        if (copy == copies.end() || !copy->second.isFile) {
            if (!IsNumberOfOther(line, location, name)) return location;
            continue;
        }
        if (comment != comments.end() && ComesBack(comment->second.location) &&
            comment->second.location == ParentOf(line.path)) {
            return location;
        }
    }
}

// Copy 1 is gone, but its comment names the item that the older copies are of.
bool BackupModel::IsNumberOfOther(const Line& line, int location, const std::wstring& first) const {
    constexpr int kHighestNumber = 99;
    const auto comment = comments.find(first);
    if (comment == comments.end()) return false;
    const std::wstring& folder = comment->second.location;
    if (ComesBack(folder) && folder == ParentOf(line.path)) return false;
    for (int number = 2; number <= kHighestNumber; ++number) {
        if (copies.contains(NameOf(line.path, number, location))) return true;
    }
    return false;
}

Date BackupModel::DateOfCopy(const std::wstring& name) const {
    const auto copy = copies.find(name);
    if (copy == copies.end()) return kNothing;
    if (const auto comment = comments.find(name); comment != comments.end()) {
        return comment->second.date;
    }
    Date newest = kNothing;
    for (const auto& [path, node] : copy->second.content) {
        if (!node.isFolder) newest = std::max(newest, node.date);
    }
    return newest;
}

void BackupModel::RunLine(const Line& line, int count, Expected& expected) {
    const std::wstring path = CopiedPath(line);
    const std::wstring key = Trimmed(path).substr(root_.size() + 1);
    const auto source = sources_.find(key);
    const bool exists = source != sources_.end();
    if (!exists) {
        expected.report.insert(expected.report.end(), {L"تأكد من توفر المجلد التالي", path});
    }

    Copy fresh{line.kind == Kind::File, {}};
    Date newest = exists ? kNoFiles : kNothing;
    std::vector<std::wstring> messages;
    const bool isFile = exists && !source->second.isFolder;
    // A folder that the list names as a file, or a file that it names as a folder.
    const bool misnamed = exists && isFile != (line.kind == Kind::File);
    if (isFile) {
        fresh.content[L""] = source->second;
        newest = source->second.date;
        messages.push_back(path);
    } else if (exists) {
        const std::wstring below = key + L"\\";
        for (const auto& [name, node] : sources_) {
            if (!name.starts_with(below)) continue;
            const std::wstring inside = name.substr(below.size());
            if (!node.isFolder) newest = std::max(newest, node.date);
            const bool direct = inside.find(L'\\') == std::wstring::npos;
            if (line.kind == Kind::Rule && (!direct || node.isFolder)) continue;
            fresh.content[inside] = node;
            if (!node.isFolder) messages.push_back(root_ + L"\\" + name);
        }
    }

    const int location = LocationOf(line);
    const std::wstring first = NameOf(path, 1, location);
    if (DateOfCopy(first) == newest) {
        expected.report.insert(expected.report.end(),
                               {L"No change since last backup for the path:", path});
        return;
    }
    expected.report.push_back(L"Backing: " + path);
    if (count <= 0) {
        expected.errors.push_back(1000);
    } else if (!misnamed) {
        copies.erase(NameOf(path, count, location));
        for (int number = count - 1; number >= 1; --number) {
            auto copy = copies.extract(NameOf(path, number, location));
            if (copy.empty()) continue;
            copy.key() = NameOf(path, number + 1, location);
            copies.insert(std::move(copy));
        }
    }
    if (!exists || misnamed) {
        if (line.kind == Kind::File) expected.messages.push_back(path);
        expected.errors.push_back(line.kind == Kind::File ? 53 : 76);
        return;
    }
    expected.messages.insert(expected.messages.end(), messages.begin(), messages.end());
    copies[first] = fresh;
    comments[first] = {newest, ParentOf(path)};
    expected.report.emplace_back(L"\tDone.");
}

}  // namespace vw::test
