#include "app/DriveChoices.h"

#include "platform/FileSystem.h"
#include "platform/RuntimeError.h"
#include "platform/WindowsHeader.h"

namespace vw {

namespace {

constexpr std::uint64_t kLeastFreeBytes = 1073741824;

bool HasRoom(FileSystem& files, const std::wstring& drive) {
    try {
        return files.FreeSpace(drive + L"\\") > kLeastFreeBytes;
    } catch (const RuntimeError&) {
        return false;  // not ready
    }
}

}  // namespace

std::vector<std::wstring> DriveChoices(FileSystem& files) {
    std::vector<std::wstring> drives{L"A:", L"C:"};
    const DWORD present = GetLogicalDrives();
    for (wchar_t letter = L'D'; letter <= L'Z'; ++letter) {
        const std::wstring drive{letter, L':'};
        const bool connected = (present >> (letter - L'A') & 1U) != 0;
        if (connected && HasRoom(files, drive)) drives.push_back(drive);
    }
    return drives;
}

}  // namespace vw
