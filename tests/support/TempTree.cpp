#include "tests/support/TempTree.h"

#include <gtest/gtest.h>

#include <stdexcept>
#include <vector>

#include "platform/LocalTime.h"
#include "platform/Utf8.h"
#include "platform/WindowsHeader.h"
#include "tests/support/WineBridge.h"

namespace vw::test {

namespace {

constexpr DWORD kSharedWithAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;

// Lifts the limit of 260 characters; paths here are absolute and tidy.
std::wstring Long(std::wstring_view path) {
    if (path.starts_with(L"\\\\")) return std::wstring(path);
    return L"\\\\?\\" + std::wstring(path);
}

std::wstring Parent(std::wstring_view path) {
    return std::wstring(path.substr(0, path.rfind(L'\\')));
}

bool IsFolder(DWORD attributes) { return (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0; }
bool IsLink(DWORD attributes) { return (attributes & FILE_ATTRIBUTE_REPARSE_POINT) != 0; }

[[noreturn]] void Fail(const char* what, std::wstring_view path) {
    const DWORD code = GetLastError();
    throw std::runtime_error(std::string("a test could not ") + what + " " + ToUtf8(path) +
                             ", system error " + std::to_string(code));
}

std::vector<WIN32_FIND_DATAW> Entries(const std::wstring& folder) {
    std::vector<WIN32_FIND_DATAW> entries;
    WIN32_FIND_DATAW data{};
    const FindHandle find(FindFirstFileW((Long(folder) + L"\\*").c_str(), &data));
    if (!find) return entries;
    do {
        const std::wstring_view name = data.cFileName;
        if (name != L"." && name != L"..") entries.push_back(data);
    } while (FindNextFileW(find.Get(), &data) != 0);
    return entries;
}

// The folders to come are kept here and not on the stack: trees can be hundreds of levels deep.
void RemoveTree(const std::wstring& path) {
    std::vector<std::wstring> pending{path};
    std::vector<std::wstring> folders;
    while (!pending.empty()) {
        const std::wstring current = std::move(pending.back());
        pending.pop_back();
        const DWORD attributes = GetFileAttributesW(Long(current).c_str());
        if (attributes == INVALID_FILE_ATTRIBUTES) continue;
        if (IsLink(attributes)) {
            RemoveLink(current);
            continue;
        }
        SetFileAttributesW(Long(current).c_str(), FILE_ATTRIBUTE_NORMAL);
        if (!IsFolder(attributes)) {
            DeleteFileW(Long(current).c_str());
            continue;
        }
        folders.push_back(current);
        for (const WIN32_FIND_DATAW& entry : Entries(current)) {
            pending.push_back(current + L"\\" + entry.cFileName);
        }
    }
    for (auto folder = folders.rbegin(); folder != folders.rend(); ++folder) {
        RemoveDirectoryW(Long(*folder).c_str());
    }
}

FILETIME FileTimeOf(const DateParts& date) {
    SYSTEMTIME local{};
    local.wYear = static_cast<WORD>(date.year);
    local.wMonth = static_cast<WORD>(date.month);
    local.wDay = static_cast<WORD>(date.day);
    local.wHour = static_cast<WORD>(date.hour);
    local.wMinute = static_cast<WORD>(date.minute);
    local.wSecond = static_cast<WORD>(date.second);
    SYSTEMTIME universal{};
    FILETIME time{};
    if (TzSpecificLocalTimeToSystemTime(nullptr, &local, &universal) == 0 ||
        SystemTimeToFileTime(&universal, &time) == 0) {
        Fail("use a date for", L"a file");
    }
    return time;
}

}  // namespace

std::ostream& operator<<(std::ostream& stream, const TreeNode& node) {
    if (node.isFolder) return stream << "a folder";
    stream << "a file of " << node.bytes.size() << " bytes, date "
           << node.date.time_since_epoch().count();
    if (node.isReadOnly) stream << ", read-only";
    if (node.isHidden) stream << ", hidden";
    if (node.bytes.size() <= 100) stream << ": " << testing::PrintToString(node.bytes);
    return stream;
}

Tree ReadTree(std::wstring_view folder) {
    const std::wstring root(folder);
    const LocalTime localTime;
    Tree tree;
    std::vector<std::wstring> pending{std::wstring()};
    while (!pending.empty()) {
        const std::wstring inside = std::move(pending.back());
        pending.pop_back();
        for (const WIN32_FIND_DATAW& entry : Entries(root + inside)) {
            const std::wstring below = inside + L"\\" + entry.cFileName;
            TreeNode& node = tree[below.substr(1)];
            node.isFolder = IsFolder(entry.dwFileAttributes);
            if (node.isFolder) {
                if (!IsLink(entry.dwFileAttributes)) pending.push_back(below);
            } else {
                node.bytes = ReadBytes(root + below);
                node.date = localTime.DateOf(entry.ftLastWriteTime);
                node.isReadOnly = (entry.dwFileAttributes & FILE_ATTRIBUTE_READONLY) != 0;
                node.isHidden = (entry.dwFileAttributes & FILE_ATTRIBUTE_HIDDEN) != 0;
            }
        }
    }
    return tree;
}

std::string ReadBytes(std::wstring_view path) {
    const FileHandle file(CreateFileW(Long(path).c_str(), GENERIC_READ, kSharedWithAll, nullptr,
                                      OPEN_EXISTING, 0, nullptr));
    if (!file) {
        ADD_FAILURE() << "no file to read at " << ToUtf8(path);
        return {};
    }
    LARGE_INTEGER size{};
    GetFileSizeEx(file.Get(), &size);
    std::string bytes(static_cast<std::size_t>(size.QuadPart), '\0');
    DWORD count = 0;
    if (ReadFile(file.Get(), bytes.data(), static_cast<DWORD>(bytes.size()), &count, nullptr) ==
            0 ||
        count != bytes.size()) {
        ADD_FAILURE() << "could not read all of " << ToUtf8(path);
    }
    return bytes;
}

Date ReadDate(std::wstring_view path) {
    WIN32_FILE_ATTRIBUTE_DATA data{};
    if (GetFileAttributesExW(Long(path).c_str(), GetFileExInfoStandard, &data) == 0) {
        ADD_FAILURE() << "nothing to date at " << ToUtf8(path);
        return kNoDate;
    }
    return LocalTime().DateOf(data.ftLastWriteTime);
}

bool Exists(std::wstring_view path) {
    return GetFileAttributesW(Long(path).c_str()) != INVALID_FILE_ATTRIBUTES;
}

FileHandle OpenAlone(const std::wstring& path) {
    FileHandle file(CreateFileW(path.c_str(), GENERIC_READ, 0, nullptr, OPEN_EXISTING, 0, nullptr));
    EXPECT_TRUE(file) << ToUtf8(path);
    return file;
}

TempTree::TempTree() {
    wchar_t temp[MAX_PATH + 1] = {};
    GetTempPathW(MAX_PATH + 1, temp);
    static unsigned number = 0;
    // The process id is in the name: two test programs may run at the same time.
    do {
        root_ = std::wstring(temp) + L"vwtest-" + std::to_wstring(GetCurrentProcessId()) + L"-" +
                std::to_wstring(++number);
    } while (CreateDirectoryW(root_.c_str(), nullptr) == 0 &&
             GetLastError() == ERROR_ALREADY_EXISTS);
    if (!Exists(root_)) Fail("make the folder", root_);
}

TempTree::~TempTree() {
    RemoveTree(root_);
    RemoveRestOfTree(root_);
}

std::wstring TempTree::Path(std::wstring_view relative) const {
    if (relative.empty()) return root_;
    if (relative.size() > 1 && relative[1] == L':') return std::wstring(relative);
    return root_ + L"\\" + std::wstring(relative);
}

std::wstring TempTree::Folder(std::wstring_view relative) const {
    std::wstring path = Path(relative);
    while (path.ends_with(L'\\')) path.pop_back();
    // From the top, since parents may be missing at any depth.
    for (std::size_t end = path.find(L'\\', 3); end != std::wstring::npos;
         end = path.find(L'\\', end + 1)) {
        CreateDirectoryW(Long(path.substr(0, end)).c_str(), nullptr);
    }
    CreateDirectoryW(Long(path).c_str(), nullptr);
    if (!Exists(path)) Fail("make the folder", path);
    return path;
}

std::wstring TempTree::File(std::wstring_view relative, std::string_view bytes) const {
    const std::wstring path = Path(relative);
    Folder(Parent(path));
    const FileHandle file(CreateFileW(Long(path).c_str(), GENERIC_WRITE, kSharedWithAll, nullptr,
                                      CREATE_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr));
    DWORD count = 0;
    if (!file || WriteFile(file.Get(), bytes.data(), static_cast<DWORD>(bytes.size()), &count,
                           nullptr) == 0) {
        Fail("write the file", path);
    }
    return path;
}

std::wstring TempTree::File(std::wstring_view relative, std::string_view bytes,
                            const DateParts& date) const {
    const std::wstring path = File(relative, bytes);
    SetDate(path, date);
    return path;
}

void TempTree::SetDate(std::wstring_view relative, const DateParts& date) const {
    const std::wstring path = Path(relative);
    const FileHandle file(CreateFileW(Long(path).c_str(), FILE_WRITE_ATTRIBUTES, kSharedWithAll,
                                      nullptr, OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS, nullptr));
    const FILETIME time = FileTimeOf(date);
    if (!file || SetFileTime(file.Get(), nullptr, nullptr, &time) == 0) Fail("date", path);
}

void TempTree::SetAttributes(std::wstring_view relative, unsigned long flags, bool on) const {
    const std::wstring path = Path(relative);
    const DWORD before = GetFileAttributesW(Long(path).c_str());
    const DWORD after = on ? before | flags : before & ~flags;
    if (before == INVALID_FILE_ATTRIBUTES || SetFileAttributesW(Long(path).c_str(), after) == 0) {
        Fail("set attributes of", path);
    }
}

bool TempTree::Link(std::wstring_view relative, std::wstring_view target) const {
    const std::wstring link = Path(relative);
    const std::wstring shown = Path(target);
    const DWORD attributes = GetFileAttributesW(Long(shown).c_str());
    if (attributes == INVALID_FILE_ATTRIBUTES) Fail("link to", shown);
    Folder(Parent(link));
    return MakeLink(link, shown, IsFolder(attributes));
}

void TempTree::Remove(std::wstring_view relative) const { RemoveTree(Path(relative)); }

}  // namespace vw::test
