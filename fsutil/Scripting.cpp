#include "fsutil/Scripting.h"

#include "fsutil/KnownFolder.h"
#include "platform/AnsiCodec.h"
#include "platform/ErrorTrap.h"
#include "platform/FileSystem.h"
#include "platform/Handle.h"
#include "platform/WindowsHeader.h"

// Behind the header above, which it builds on.
#include <shellapi.h>

namespace vw::MMyScripting {

namespace {

ErrorTrap Trap(const System& system) { return {system.errors, L"Module", L"MMyScripting"}; }
// A folder that one of the system's calls returns; both are far shorter than this.
template <class Call>
std::wstring FolderFrom(Call call) {
    wchar_t text[MAX_PATH + 1] = {};
    const UINT length = call(text, MAX_PATH + 1);
    return length > MAX_PATH ? std::wstring() : std::wstring(text, length);
}

std::wstring SystemFolder() { return FolderFrom(GetSystemDirectoryW); }

void ReplaceForOldSystem(int& code) {
    if (code == 0) code = 4;
    if (code == 2) code = 17;
    if (code == 1) code = 11;
    if (code == 3) code = 14;
}

void StartLinkHandler(std::wstring_view pathOrAddress) {
    // The whole path of the program: one of that name beside the program that is backed up, or on
    // the search path, must never run.
    const std::wstring program = SystemFolder() + L"\\rundll32.exe";
    std::wstring command = FileProtocolCommand(pathOrAddress);
    STARTUPINFOW startup{};
    startup.cb = sizeof(startup);
    startup.dwFlags = STARTF_USESHOWWINDOW;
    startup.wShowWindow = SW_SHOWNORMAL;
    // Both handles stay null when it cannot be started.
    PROCESS_INFORMATION process{};
    CreateProcessW(program.c_str(), command.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr,
                   &startup, &process);
    const KernelHandle processHandle(process.hProcess);
    const KernelHandle threadHandle(process.hThread);
}

}  // namespace

void WshShellInt(System& system, ScriptShell& shell) {
    Trap(system)(L"WshShellInt", [&] { shell.Create(); });
}

std::wstring GetSpecialFolders(System& system, ScriptShell& shell, int& code, bool isWinNT) {
    constexpr int kFirstOwn = 50;
    std::wstring path;
    Trap(system)(L"GetSpecialFolders", [&] {
        if (code >= kFirstOwn && code <= kFirstOwn + 2) {
            code -= kFirstOwn;
            path = code == 0   ? FolderFrom(GetWindowsDirectoryW)
                   : code == 1 ? SystemFolder()
                               : system.files.TempFolder();
            return;
        }
        if (!isWinNT) ReplaceForOldSystem(code);
        path = shell.SpecialFolder(code);
        // Some systems' collection has names only, and some have no such object at all.
        if (path.empty()) path = KnownFolderOfNumber(code);
    });
    return path;
}

std::wstring FileProtocolCommand(std::wstring_view pathOrAddress) {
    return L"rundll32.exe url.dll,FileProtocolHandler " + std::wstring(pathOrAddress);
}

bool FitsFileProtocol(const AnsiCodec& ansi, std::wstring_view pathOrAddress) {
    constexpr std::size_t kLongest = 259;
    return pathOrAddress.size() <= kLongest && ansi.Holds(pathOrAddress);
}

void ShellPath(System& system, std::wstring_view pathOrAddress) {
    if (FitsFileProtocol(system.ansi, pathOrAddress)) {
        StartLinkHandler(pathOrAddress);
    } else {
        ShellExecuteW(nullptr, L"open", std::wstring(pathOrAddress).c_str(), nullptr, nullptr,
                      SW_SHOWNORMAL);
    }
}

}  // namespace vw::MMyScripting
