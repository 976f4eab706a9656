#include <algorithm>
#include <array>
#include <cstring>
#include <vector>

#include "platform/Handle.h"
#include "platform/RuntimeError.h"
#include "platform/SystemError.h"
#include "platform/SystemPath.h"
#include "platform/Win32FileSystem.h"

// Which folder a path names, and whether two files hold the same.

namespace vw {

namespace {

constexpr DWORD kSharedWithAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
constexpr std::wstring_view kLongPrefix = L"\\\\?\\";

// Opens a file or folder to ask about it, not to read it.
FileHandle OpenToAsk(std::wstring_view path) {
    FileHandle handle(CreateFileW(SystemPath(path).c_str(), FILE_READ_ATTRIBUTES, kSharedWithAll,
                                  nullptr, OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS, nullptr));
    if (!handle) RaiseLast(path);
    return handle;
}

BY_HANDLE_FILE_INFORMATION InformationOf(std::wstring_view path) {
    const FileHandle handle = OpenToAsk(path);
    BY_HANDLE_FILE_INFORMATION information{};
    if (GetFileInformationByHandle(handle.Get(), &information) == 0) RaiseLast(path);
    return information;
}

std::uint64_t NumberOf(const BY_HANDLE_FILE_INFORMATION& information) {
    return (static_cast<std::uint64_t>(information.nFileIndexHigh) << 32U) |
           information.nFileIndexLow;
}

// The share of \\server\share\folder, or what the system has behind a drive letter.
std::wstring DeviceOf(std::wstring_view folder) {
    const std::wstring path = AbsolutePath(folder);
    if (path.starts_with(L"\\\\") && !path.starts_with(kLongPrefix)) {
        const std::size_t share = path.find(L'\\', 2);
        return path.substr(0, share == path.npos ? share : path.find(L'\\', share + 1));
    }
    std::array<wchar_t, 1024> device{};
    const DWORD length = QueryDosDeviceW(path.substr(0, 2).c_str(), device.data(),
                                         static_cast<DWORD>(device.size()));
    return length == 0 ? std::wstring{} : std::wstring(device.data());
}

constexpr std::size_t kPart = std::size_t{256} * 1024;

// Reads until the part is full or the file ends; gives how many bytes came.
std::size_t ReadPart(const FileHandle& file, char* part, std::wstring_view path) {
    std::size_t filled = 0;
    while (filled < kPart) {
        DWORD count = 0;
        if (ReadFile(file.Get(), part + filled, static_cast<DWORD>(kPart - filled), &count,
                     nullptr) == 0) {
            RaiseLast(path);
        }
        if (count == 0) break;
        filled += count;
    }
    return filled;
}

FileHandle OpenToRead(std::wstring_view path) {
    FileHandle file(CreateFileW(SystemPath(path).c_str(), GENERIC_READ, kSharedWithAll, nullptr,
                                OPEN_EXISTING, FILE_FLAG_SEQUENTIAL_SCAN, nullptr));
    if (!file) RaiseLast(path);
    return file;
}

}  // namespace

FolderIdentity Win32FileSystem::Identify(std::wstring_view folder) {
    const BY_HANDLE_FILE_INFORMATION first = InformationOf(folder);
    if ((first.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) == 0) {
        Throw(error_number::kFileNotFound, folder);
    }
    FolderIdentity identity;
    identity.volume = first.dwVolumeSerialNumber;
    identity.device = DeviceOf(folder);
    // Some servers invent a number at each opening.
    if (NumberOf(first) == NumberOf(InformationOf(folder))) identity.folder = NumberOf(first);
    return identity;
}

std::wstring Win32FileSystem::RealPath(std::wstring_view path) {
    const FileHandle handle = OpenToAsk(path);
    std::wstring real(MAX_PATH, L'\0');
    for (;;) {
        const DWORD length = GetFinalPathNameByHandleW(
            handle.Get(), real.data(), static_cast<DWORD>(real.size()), FILE_NAME_NORMALIZED);
        // Some devices have no final path.
        if (length == 0) return AbsolutePath(path);
        const bool fits = length < real.size();
        real.resize(length);
        if (fits) break;
    }
    return WithoutLongPrefix(real);
}

bool Win32FileSystem::HaveSameBytes(std::wstring_view first, std::wstring_view second,
                                    const CopyProgress& progress) {
    // Filling this much memory with zeros takes longer than reading a small file.
    static thread_local std::vector<char> parts(2 * kPart);
    char* const firstPart = parts.data();
    char* const secondPart = firstPart + kPart;
    const FileHandle firstFile = OpenToRead(first);
    const FileHandle secondFile = OpenToRead(second);
    for (;;) {
        const std::size_t count = ReadPart(firstFile, firstPart, first);
        if (ReadPart(secondFile, secondPart, second) != count) return false;
        if (std::memcmp(firstPart, secondPart, count) != 0) return false;
        if (count < kPart) return true;
        if (progress) progress();
    }
}

}  // namespace vw
