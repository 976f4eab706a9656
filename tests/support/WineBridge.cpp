#include "tests/support/WineBridge.h"

#include <algorithm>
#include <string>

#include "platform/Handle.h"
#include "platform/Utf8.h"
#include "platform/WindowsHeader.h"

namespace vw::test {

namespace {

using UnixNameFunction = char*(CDECL*)(LPCWSTR);

// Wine's own way from a Windows path to the path outside; absent on Windows.
UnixNameFunction UnixName() {
    const HMODULE kernel = GetModuleHandleW(L"kernel32.dll");
    const FARPROC function = GetProcAddress(kernel, "wine_get_unix_file_name");
    return reinterpret_cast<UnixNameFunction>(reinterpret_cast<void*>(function));
}

std::wstring OutsidePath(std::wstring_view path) {
    char* const name = UnixName()(std::wstring(path).c_str());
    if (name == nullptr) return {};
    std::wstring result = FromUtf8(name);
    HeapFree(GetProcessHeap(), 0, name);
    return result;
}

// The path outside of something that may be a link: only its folder is looked up.
std::wstring OutsidePathOfLink(std::wstring_view path) {
    const std::size_t separator = path.rfind(L'\\');
    return OutsidePath(path.substr(0, separator)) + L"/" + std::wstring(path.substr(separator + 1));
}

bool Shown(std::wstring_view path) {
    return GetFileAttributesW(std::wstring(path).c_str()) != INVALID_FILE_ATTRIBUTES;
}

// Runs a program of the system outside and waits until `path` is shown or not; its process cannot
// be waited for.
bool RunOutside(const std::wstring& program, std::wstring command, std::wstring_view path,
                bool shown) {
    STARTUPINFOW startup{};
    startup.cb = sizeof(startup);
    PROCESS_INFORMATION process{};
    if (CreateProcessW(program.c_str(), command.data(), nullptr, nullptr, FALSE, 0, nullptr,
                       nullptr, &startup, &process) == 0) {
        return false;
    }
    const KernelHandle processHandle(process.hProcess);
    const KernelHandle threadHandle(process.hThread);
    for (int i = 0; i < 1000; ++i) {
        if (Shown(path) == shown) return true;
        Sleep(10);
    }
    return false;
}

}  // namespace

bool UnderWine() { return UnixName() != nullptr; }

bool MakeLink(std::wstring_view link, std::wstring_view target, bool targetIsFolder) {
    if (!UnderWine()) {
        constexpr DWORD kAllowUnprivileged = 2;
        const DWORD flags =
            kAllowUnprivileged | (targetIsFolder ? SYMBOLIC_LINK_FLAG_DIRECTORY : 0);
        return CreateSymbolicLinkW(std::wstring(link).c_str(), std::wstring(target).c_str(),
                                   flags) != 0;
    }
    const std::wstring command =
        L"ln -s \"" + OutsidePath(target) + L"\" \"" + OutsidePathOfLink(link) + L"\"";
    return RunOutside(L"\\\\?\\unix\\bin\\ln", command, link, true);
}

void RemoveLink(std::wstring_view link) {
    if (!UnderWine()) {
        const std::wstring name(link);
        if (RemoveDirectoryW(name.c_str()) == 0) DeleteFileW(name.c_str());
        return;
    }
    // Removing it from inside would remove what it shows.
    const std::wstring command = L"rm \"" + OutsidePathOfLink(link) + L"\"";
    RunOutside(L"\\\\?\\unix\\bin\\rm", command, link, false);
}

namespace {

std::wstring DriveName(wchar_t letter) { return {letter, L':'}; }

// Wine takes the folder behind a new letter for one of another drive at first. When it finds the
// letter, up to a second later, the volume has another serial number: one more exchange.
void WaitForOwnSerialNumber(wchar_t letter) {
    const std::wstring root = DriveName(letter) + L"\\";
    constexpr int kAttempts = 1000;
    for (int i = 0; i < kAttempts; ++i) {
        const FileHandle handle(CreateFileW(root.c_str(), 0, FILE_SHARE_READ | FILE_SHARE_WRITE,
                                            nullptr, OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS,
                                            nullptr));
        BY_HANDLE_FILE_INFORMATION facts{};
        if (GetFileInformationByHandle(handle.Get(), &facts) != 0 &&
            facts.dwVolumeSerialNumber == static_cast<DWORD>(letter) << 24) {
            return;
        }
        Sleep(10);
    }
}

// The link that is the drive letter: Wine keeps all of them in one folder.
std::wstring DriveLink(wchar_t letter) {
    std::wstring link = OutsidePath(L"C:\\");
    link.resize(link.rfind(L"c:"));
    return link + static_cast<wchar_t>(letter - L'A' + L'a') + L":";
}

}  // namespace

std::wstring OutsideFolderOfDrive(wchar_t letter) {
    std::wstring link = DriveLink(letter);
    // The link is named like a drive; its folder is not. drive_c is beside the links' folder.
    link.resize(link.rfind(L"/dosdevices/"));
    std::replace(link.begin(), link.end(), L'/', L'\\');
    return L"Z:" + link + L"\\drive_" + static_cast<wchar_t>(letter - L'A' + L'a');
}

void PlugIn(wchar_t letter, std::wstring_view folder) {
    if (!UnderWine()) {
        DefineDosDeviceW(0, DriveName(letter).c_str(), std::wstring(folder).c_str());
        return;
    }
    RunOutside(L"\\\\?\\unix\\bin\\ln",
               L"ln -sfn \"" + OutsidePath(folder) + L"\" \"" + DriveLink(letter) + L"\"",
               DriveName(letter) + L"\\", true);
    WaitForOwnSerialNumber(letter);
}

void PlugOut(wchar_t letter) {
    if (!UnderWine()) {
        DefineDosDeviceW(DDD_REMOVE_DEFINITION, DriveName(letter).c_str(), nullptr);
        return;
    }
    RunOutside(L"\\\\?\\unix\\bin\\rm", L"rm -f \"" + DriveLink(letter) + L"\"",
               DriveName(letter) + L"\\", false);
}

void RemoveRestOfTree(std::wstring_view folder) {
    if (!UnderWine() || !Shown(folder)) return;
    const std::wstring outside = OutsidePath(folder);
    if (outside.empty()) return;
    RunOutside(L"\\\\?\\unix\\bin\\rm", L"rm -rf \"" + outside + L"\"", folder, false);
}

}  // namespace vw::test
