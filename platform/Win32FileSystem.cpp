#include "platform/Win32FileSystem.h"

#include <algorithm>
#include <array>
#include <exception>

#include "platform/AccessRights.h"
#include "platform/FolderEnumeration.h"
#include "platform/FolderInfo.h"
#include "platform/Handle.h"
#include "platform/ReadOnlyMark.h"
#include "platform/RuntimeError.h"
#include "platform/SystemError.h"
#include "platform/SystemPath.h"

namespace vw {

namespace {

constexpr DWORD kSharedWithAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;

// Codes that mean "nothing of that name": a question whether something exists is then answered.
bool MeansAbsent(DWORD code) {
    switch (code) {
        case ERROR_FILE_NOT_FOUND:
        case ERROR_PATH_NOT_FOUND:
        case ERROR_INVALID_NAME:
        case ERROR_BAD_PATHNAME:
        case ERROR_INVALID_DRIVE:
        case ERROR_NOT_READY:
        case ERROR_BAD_NETPATH:
        case ERROR_BAD_NET_NAME:
        case ERROR_BAD_DEV_TYPE:  // a server that is not there, as some systems say it
        case ERROR_DIRECTORY:
        case ERROR_FILENAME_EXCED_RANGE:
            return true;
        default:
            return false;
    }
}

bool CanNameOne(std::wstring_view path) {
    constexpr std::size_t kLongestPath = 32'000;
    return !path.empty() && path.size() <= kLongestPath &&
           path.find_first_of(std::wstring_view(L"*?\0", 3),
                              path.starts_with(L"\\\\?\\") ? 4 : 0) == std::wstring_view::npos;
}

// Runs a deleting or replacing call; when access is denied, once more without the read-only mark.
template <class Call>
void EvenReadOnly(const std::wstring& protectedPath, std::wstring_view path, Call call) {
    if (call()) return;
    const DWORD code = GetLastError();
    if (code == ERROR_ACCESS_DENIED && ClearReadOnly(protectedPath) && call()) return;
    RaiseCode(code, path);
}

bool IsFolder(const std::wstring& systemPath) {
    const DWORD attributes = GetFileAttributesW(systemPath.c_str());
    return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
}

struct CopyWatch {
    const FileSystem::CopyProgress& progress;
    std::exception_ptr failure;
};

// No exception may cross the system's copy call; the copy goes on and the exception afterwards.
DWORD CALLBACK OnCopyProgress(LARGE_INTEGER, LARGE_INTEGER, LARGE_INTEGER, LARGE_INTEGER, DWORD,
                              DWORD, HANDLE, HANDLE, LPVOID data) {
    auto& watch = *static_cast<CopyWatch*>(data);
    if (watch.failure) return PROGRESS_QUIET;
    try {
        watch.progress();
    } catch (...) {
        watch.failure = std::current_exception();
    }
    return PROGRESS_CONTINUE;
}

// Text files refuse with "Path/File access error", everything else with "Permission denied".
[[noreturn]] void RaiseForText(DWORD code, std::wstring_view path) {
    if (code != ERROR_ACCESS_DENIED) RaiseCode(code, path);
    constexpr int kNumber = error_number::kAccessError;
    throw RuntimeError(kNumber, DescriptionOf(kNumber), std::wstring(path),
                       SourceLocation::current().line(), code);
}

}  // namespace

std::optional<FileInfo> Win32FileSystem::Stat(std::wstring_view path) {
    if (!CanNameOne(path) || NamesDevice(path)) return std::nullopt;
    WIN32_FILE_ATTRIBUTE_DATA data{};
    const std::wstring systemPath = SystemPath(path);
    if (GetFileAttributesExW(systemPath.c_str(), GetFileExInfoStandard, &data) == 0) {
        const DWORD code = GetLastError();
        if (MeansAbsent(code)) return std::nullopt;
        // A file that is open without sharing is still in its folder's listing.
        const auto listed = FactsFromListing(systemPath, localTime_);
        if (!listed) RaiseCode(code, path);
        return listed;
    }
    return FactsOf(data, systemPath, localTime_);
}

void Win32FileSystem::List(std::wstring_view folder, const EntryVisitor& visitor) {
    EnumerateFolder(SystemPath(folder), folder, localTime_, visitor);
}

void Win32FileSystem::Copy(std::wstring_view from, std::wstring_view to,
                           const CopyProgress& progress) {
    const std::wstring source = SystemPath(from);
    const std::wstring target = SystemPath(to);
    CopyWatch watch{progress, nullptr};
    // A decrypted copy on a drive without encryption beats no copy.
    const DWORD flags = COPY_FILE_FAIL_IF_EXISTS | COPY_FILE_ALLOW_DECRYPTED_DESTINATION;
    const BOOL copied = CopyFileExW(source.c_str(), target.c_str(),
                                    progress ? OnCopyProgress : nullptr, &watch, nullptr, flags);
    const DWORD code = GetLastError();
    if (watch.failure) std::rethrow_exception(watch.failure);
    if (copied != 0) return;
    if (code == ERROR_FILE_EXISTS || code == ERROR_ALREADY_EXISTS) RaiseCode(code, to);
    if (IsFolder(source)) Throw(error_number::kFileNotFound, from);
    // Windows denies the access to a folder where a file is wanted.
    const bool isFolderThere = IsFolder(target);
    if (code == ERROR_ACCESS_DENIED && isFolderThere) RaiseCode(ERROR_FILE_EXISTS, to);
    // What a full disk or a read error leaves is no copy.
    if (!isFolderThere && DeleteFileW(target.c_str()) == 0 && ClearReadOnly(target)) {
        DeleteFileW(target.c_str());
    }
    RaiseCode(code, from);
}

void Win32FileSystem::CreateFolder(std::wstring_view path) {
    if (CreateDirectoryW(SystemPath(path).c_str(), nullptr) == 0) RaiseLast(path);
}

void Win32FileSystem::RemoveFile(std::wstring_view path) {
    const std::wstring systemPath = SystemPath(path);
    EvenReadOnly(systemPath, path, [&] { return DeleteFileW(systemPath.c_str()) != 0; });
}

void Win32FileSystem::RemoveFolder(std::wstring_view path) {
    const std::wstring systemPath = SystemPath(path);
    EvenReadOnly(systemPath, path, [&] { return RemoveDirectoryW(systemPath.c_str()) != 0; });
}

void Win32FileSystem::Rename(std::wstring_view from, std::wstring_view to) {
    const std::wstring source = SystemPath(from);
    const std::wstring target = SystemPath(to);
    if (MoveFileExW(source.c_str(), target.c_str(), 0) == 0) RaiseLast(from);
}

void Win32FileSystem::Replace(std::wstring_view from, std::wstring_view to) {
    const std::wstring source = SystemPath(from);
    const std::wstring target = SystemPath(to);
    EvenReadOnly(target, to, [&] {
        return MoveFileExW(source.c_str(), target.c_str(),
                           MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH) != 0;
    });
}

std::string Win32FileSystem::Read(std::wstring_view path) {
    const FileHandle file(CreateFileW(SystemPath(path).c_str(), GENERIC_READ, kSharedWithAll,
                                      nullptr, OPEN_EXISTING, FILE_FLAG_SEQUENTIAL_SCAN, nullptr));
    if (!file) RaiseForText(GetLastError(), path);
    // Most files that are read are comments of a hundred bytes.
    std::string bytes;
    std::array<char, 8 * 1024> chunk;
    for (;;) {
        DWORD count = 0;
        if (ReadFile(file.Get(), chunk.data(), DWORD{chunk.size()}, &count, nullptr) == 0) {
            RaiseLast(path);
        }
        if (count == 0) return bytes;
        bytes.append(chunk.data(), count);
    }
}

void Win32FileSystem::Write(std::wstring_view path, std::string_view bytes, Flush flush) {
    const std::wstring systemPath = SystemPath(path);
    FileHandle file(CreateFileW(systemPath.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS,
                                FILE_ATTRIBUTE_NORMAL, nullptr));
    if (!file) RaiseForText(GetLastError(), path);
    while (!bytes.empty()) {
        constexpr std::size_t kMost = 1U << 30;
        DWORD written = 0;
        const auto part = static_cast<DWORD>(std::min(bytes.size(), kMost));
        const BOOL done = WriteFile(file.Get(), bytes.data(), part, &written, nullptr);
        if (done == 0 || written == 0) {
            const DWORD code = done == 0 ? GetLastError() : DWORD{ERROR_DISK_FULL};
            file.Reset();
            DeleteFileW(systemPath.c_str());
            RaiseCode(code, path);
        }
        bytes.remove_prefix(written);
    }
    if (flush == Flush::Yes && FlushFileBuffers(file.Get()) == 0) {
        const DWORD code = GetLastError();
        file.Reset();
        DeleteFileW(systemPath.c_str());
        RaiseCode(code, path);
    }
}

void Win32FileSystem::CopyFolderInfo(std::wstring_view from, std::wstring_view to, Marks marks) {
    CopyInfoOfFolder(from, to, marks == Marks::Keep);
}

void Win32FileSystem::CopyAccessRights(std::wstring_view from, std::wstring_view to,
                                       std::string& usual) {
    PassAccessRightsOn(from, to, usual);
}

std::unique_ptr<HeldFile> Win32FileSystem::Hold(std::wstring_view path) { return HoldFile(path); }

std::uint64_t Win32FileSystem::FreeSpace(std::wstring_view folder) {
    ULARGE_INTEGER available{};
    std::wstring systemPath = SystemPath(folder);
    // Not every file system forgives a second one.
    if (!systemPath.ends_with(L'\\')) systemPath += L'\\';
    if (GetDiskFreeSpaceExW(systemPath.c_str(), &available, nullptr, nullptr) == 0) {
        RaiseLast(folder);
    }
    return available.QuadPart;
}

DriveType Win32FileSystem::DriveTypeOf(std::wstring_view path) {
    const std::wstring absolute = AbsolutePath(path);
    if (absolute.starts_with(L"\\\\") && !absolute.starts_with(L"\\\\?\\")) {
        return DriveType::Network;
    }
    std::wstring root(absolute.size() + MAX_PATH, L'\0');
    // A drive is its own root. Asking would reach for the server of one that may be gone.
    const bool isRoot = absolute.size() <= 3;
    if (isRoot ||
        GetVolumePathNameW(absolute.c_str(), root.data(), static_cast<DWORD>(root.size())) == 0) {
        root = absolute.substr(0, 3);
    }
    switch (GetDriveTypeW(root.c_str())) {
        case DRIVE_REMOVABLE:
            return DriveType::Removable;
        case DRIVE_FIXED:
            return DriveType::Fixed;
        case DRIVE_REMOTE:
            return DriveType::Network;
        case DRIVE_CDROM:
            return DriveType::Optical;
        case DRIVE_RAMDISK:
            return DriveType::Memory;
        default:
            return DriveType::Unknown;
    }
}

std::wstring Win32FileSystem::TempFolder() {
    std::wstring path(MAX_PATH + 1, L'\0');
    const DWORD length = GetTempPathW(static_cast<DWORD>(path.size()), path.data());
    if (length == 0 || length > path.size()) RaiseLast(L"%TEMP%");
    path.resize(length);
    while (path.size() > 3 && path.back() == L'\\') path.pop_back();
    return path;
}

std::wstring Win32FileSystem::FullPath(std::wstring_view path) { return AbsolutePath(path); }

}  // namespace vw
