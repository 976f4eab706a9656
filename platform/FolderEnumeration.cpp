#include "platform/FolderEnumeration.h"

#include "platform/Handle.h"
#include "platform/RuntimeError.h"
#include "platform/SystemError.h"

namespace vw {

namespace {

// Tag bit of reparse points that stand for another place. Cloud files have a reparse point too,
// but they are ordinary files and folders to their user.
constexpr DWORD kStandsForAnother = 0x20000000;

bool IsLinkTag(DWORD tag) { return tag == 0 || (tag & kStandsForAnother) != 0; }

std::uint64_t Joined(DWORD high, DWORD low) {
    return (static_cast<std::uint64_t>(high) << 32) | low;
}

void TakeDates(const FILETIME& lastWrite, const LocalTime& localTime, FileFacts& facts) {
    facts.lastWrite = localTime.DateOf(lastWrite);
    facts.lastWriteByPresentRules = localTime.DateByPresentRules(lastWrite);
}

template <class Data>
FileFacts PlainFacts(const Data& data, const LocalTime& localTime) {
    FileFacts facts;
    facts.isFolder = (data.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
    facts.isReadOnly = (data.dwFileAttributes & FILE_ATTRIBUTE_READONLY) != 0;
    facts.isHidden = (data.dwFileAttributes & FILE_ATTRIBUTE_HIDDEN) != 0;
    facts.isSystem = (data.dwFileAttributes & FILE_ATTRIBUTE_SYSTEM) != 0;
    facts.size = facts.isFolder ? 0 : Joined(data.nFileSizeHigh, data.nFileSizeLow);
    TakeDates(data.ftLastWriteTime, localTime, facts);
    return facts;
}

// Size and date of the file that a link shows; the link's own when it shows nothing.
void FollowFileLink(const std::wstring& systemPath, const LocalTime& localTime, FileFacts& facts) {
    const FileHandle file(CreateFileW(systemPath.c_str(), FILE_READ_ATTRIBUTES,
                                      FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                                      nullptr, OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS, nullptr));
    BY_HANDLE_FILE_INFORMATION data{};
    if (!file || GetFileInformationByHandle(file.Get(), &data) == 0) return;
    facts.size = Joined(data.nFileSizeHigh, data.nFileSizeLow);
    TakeDates(data.ftLastWriteTime, localTime, facts);
}

template <class PathOf>
FileFacts EntryFacts(const WIN32_FIND_DATAW& data, const LocalTime& localTime, PathOf pathOf) {
    FileFacts facts = PlainFacts(data, localTime);
    if ((data.dwFileAttributes & FILE_ATTRIBUTE_REPARSE_POINT) == 0) return facts;
    const bool link = IsLinkTag(data.dwReserved0);
    if (facts.isFolder) {
        facts.isLink = link;
    } else if (link) {
        FollowFileLink(pathOf(), localTime, facts);
    }
    return facts;
}

bool IsDots(const wchar_t* name) {
    return name[0] == L'.' && (name[1] == L'\0' || (name[1] == L'.' && name[2] == L'\0'));
}

}  // namespace

FileFacts FactsOf(const WIN32_FILE_ATTRIBUTE_DATA& data, const std::wstring& systemPath,
                  const LocalTime& localTime) {
    if ((data.dwFileAttributes & FILE_ATTRIBUTE_REPARSE_POINT) == 0) {
        return PlainFacts(data, localTime);
    }
    // Only the listing of the parent folder tells the kind of a reparse point.
    return FactsFromListing(systemPath, localTime).value_or(PlainFacts(data, localTime));
}

std::optional<FileFacts> FactsFromListing(const std::wstring& systemPath,
                                          const LocalTime& localTime) {
    WIN32_FIND_DATAW data{};
    const FindHandle found(FindFirstFileW(systemPath.c_str(), &data));
    if (!found) return std::nullopt;
    return EntryFacts(data, localTime, [&] { return systemPath; });
}

void EnumerateFolder(const std::wstring& systemPath, std::wstring_view path,
                     const LocalTime& localTime, const FileSystem::EntryVisitor& visitor) {
    const std::wstring prefix = systemPath.back() == L'\\' ? systemPath : systemPath + L"\\";
    WIN32_FIND_DATAW data{};
    const FindHandle found(FindFirstFileExW((prefix + L"*").c_str(), FindExInfoBasic, &data,
                                            FindExSearchNameMatch, nullptr,
                                            FIND_FIRST_EX_LARGE_FETCH));
    if (!found) {
        const DWORD code = GetLastError();
        const DWORD attributes = GetFileAttributesW(systemPath.c_str());
        const bool exists = attributes != INVALID_FILE_ATTRIBUTES;
        const bool isFolder = exists && (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
        // The empty root of a drive has not even "." and "..".
        if (isFolder && code == ERROR_FILE_NOT_FOUND) return;
        if ((exists && !isFolder) || code == ERROR_FILE_NOT_FOUND || code == ERROR_PATH_NOT_FOUND) {
            Raise(error_number::kPathNotFound, path);
        }
        RaiseCode(code, path);
    }
    FolderEntry entry;
    do {
        if (IsDots(data.cFileName)) continue;
        static_cast<FileFacts&>(entry) =
            EntryFacts(data, localTime, [&] { return prefix + data.cFileName; });
        entry.name = data.cFileName;
        visitor(entry);
    } while (FindNextFileW(found.Get(), &data) != 0);
    if (GetLastError() != ERROR_NO_MORE_FILES) RaiseLast(path);
}

}  // namespace vw
