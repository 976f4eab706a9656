#include "platform/FolderEnumeration.h"

#include "platform/Handle.h"
#include "platform/RuntimeError.h"
#include "platform/SystemError.h"

namespace vw {

namespace {

// Tag bit of reparse points that refer to another place. Cloud files have a reparse point too,
// but they are ordinary files and folders to their user.
constexpr DWORD kRefersElsewhere = 0x20000000;

bool IsLinkTag(DWORD tag) { return tag == 0 || (tag & kRefersElsewhere) != 0; }

// Files that are no data: they cannot be opened, or reading them would take what others send.
bool HoldsNoData(DWORD tag) {
    constexpr DWORD kAppAlias = 0x8000001B;
    constexpr DWORD kSocket = 0x80000023;
    constexpr DWORD kLinuxPipe = 0x80000024;
    constexpr DWORD kLinuxCharacterDevice = 0x80000025;
    constexpr DWORD kLinuxBlockDevice = 0x80000026;
    switch (tag) {
        case kAppAlias:
        case kSocket:
        case kLinuxPipe:
        case kLinuxCharacterDevice:
        case kLinuxBlockDevice:
            return true;
        default:
            return false;
    }
}

// The headers of the compiler lack some of them.
constexpr DWORD kRecallOnOpen = 0x00040000;
constexpr DWORD kRecallOnDataAccess = 0x00400000;
constexpr DWORD kOnlyInCloud = kRecallOnOpen | kRecallOnDataAccess | FILE_ATTRIBUTE_OFFLINE;

// Codes of opening a link whose target does not exist. A server that is down, or a folder that may
// not be read, is another matter: the file may be there.
bool LeadsNowhere(DWORD code) {
    switch (code) {
        case ERROR_FILE_NOT_FOUND:
        case ERROR_PATH_NOT_FOUND:
        case ERROR_INVALID_NAME:
        case ERROR_CANT_ACCESS_FILE:
        case ERROR_CANT_RESOLVE_FILENAME:
            return true;
        default:
            return false;
    }
}

std::uint64_t Joined(DWORD high, DWORD low) {
    return (static_cast<std::uint64_t>(high) << 32) | low;
}

void TakeDates(const FILETIME& lastWrite, const LocalTime& localTime, FileInfo& facts) {
    facts.lastWrite = localTime.DateOf(lastWrite);
    facts.lastWriteByPresentRules = localTime.DateByPresentRules(lastWrite);
}

template <class Data>
FileInfo PlainFacts(const Data& data, const LocalTime& localTime) {
    FileInfo facts;
    facts.isFolder = (data.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
    facts.isReadOnly = (data.dwFileAttributes & FILE_ATTRIBUTE_READONLY) != 0;
    facts.isHidden = (data.dwFileAttributes & FILE_ATTRIBUTE_HIDDEN) != 0;
    facts.isSystem = (data.dwFileAttributes & FILE_ATTRIBUTE_SYSTEM) != 0;
    if (!facts.isFolder) {
        facts.isOnlyInCloud = (data.dwFileAttributes & kOnlyInCloud) != 0;
        facts.isEncrypted = (data.dwFileAttributes & FILE_ATTRIBUTE_ENCRYPTED) != 0;
        facts.size = Joined(data.nFileSizeHigh, data.nFileSizeLow);
    }
    TakeDates(data.ftLastWriteTime, localTime, facts);
    return facts;
}

// Size and date of the file that a link shows; the link's own when it cannot be asked.
void FollowFileLink(const std::wstring& systemPath, const LocalTime& localTime, FileInfo& facts) {
    const FileHandle file(CreateFileW(systemPath.c_str(), FILE_READ_ATTRIBUTES,
                                      FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                                      nullptr, OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS, nullptr));
    if (!file) facts.isLink = LeadsNowhere(GetLastError());
    BY_HANDLE_FILE_INFORMATION data{};
    if (!file || GetFileInformationByHandle(file.Get(), &data) == 0) return;
    facts.size = Joined(data.nFileSizeHigh, data.nFileSizeLow);
    TakeDates(data.ftLastWriteTime, localTime, facts);
}

bool IsDots(const wchar_t* name) {
    return name[0] == L'.' && (name[1] == L'\0' || (name[1] == L'.' && name[2] == L'\0'));
}

}  // namespace

FileInfo FactsOf(const WIN32_FIND_DATAW& data, const LocalTime& localTime,
                 const std::function<std::wstring()>& systemPath) {
    FileInfo facts = PlainFacts(data, localTime);
    if ((data.dwFileAttributes & FILE_ATTRIBUTE_REPARSE_POINT) == 0) return facts;
    const DWORD tag = data.dwReserved0;
    if (facts.isFolder) {
        facts.isLink = IsLinkTag(tag);
    } else if (HoldsNoData(tag)) {
        facts.isLink = true;
    } else if (IsLinkTag(tag)) {
        FollowFileLink(systemPath(), localTime, facts);
    }
    return facts;
}

FileInfo FactsOf(const WIN32_FILE_ATTRIBUTE_DATA& data, const std::wstring& systemPath,
                 const LocalTime& localTime) {
    if ((data.dwFileAttributes & FILE_ATTRIBUTE_REPARSE_POINT) == 0) {
        return PlainFacts(data, localTime);
    }
    // Only the listing of the parent folder gives the kind of a reparse point.
    return FactsFromListing(systemPath, localTime).value_or(PlainFacts(data, localTime));
}

std::optional<FileInfo> FactsFromListing(const std::wstring& systemPath,
                                         const LocalTime& localTime) {
    WIN32_FIND_DATAW data{};
    const FindHandle found(FindFirstFileW(systemPath.c_str(), &data));
    if (!found) return std::nullopt;
    return FactsOf(data, localTime, [&] { return systemPath; });
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
            Throw(error_number::kPathNotFound, path);
        }
        RaiseCode(code, path);
    }
    FolderEntry entry;
    do {
        if (IsDots(data.cFileName)) continue;
        static_cast<FileInfo&>(entry) =
            FactsOf(data, localTime, [&] { return prefix + data.cFileName; });
        entry.name = data.cFileName;
        visitor(entry);
    } while (FindNextFileW(found.Get(), &data) != 0);
    if (GetLastError() != ERROR_NO_MORE_FILES) RaiseLast(path);
}

}  // namespace vw
