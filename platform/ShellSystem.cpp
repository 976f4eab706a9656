#include "platform/CCommonAPI.h"
#include "platform/MessageBoxes.h"
#include "platform/RuntimeError.h"

namespace vw {
namespace {

bool IsFile(const std::wstring& path) {
    const DWORD attributes = GetFileAttributesW(path.c_str());
    return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) == 0;
}

// A bare path is quoted: otherwise C:\Program.exe would be tried before C:\Program Files\...
void StartProgram(const std::wstring& command) {
    const bool barePath = IsFile(command);
    std::wstring commandLine = barePath ? L"\"" + command + L"\"" : command;
    STARTUPINFOW startup{};
    startup.cb = sizeof startup;
    startup.dwFlags = STARTF_USESHOWWINDOW;
    startup.wShowWindow = SW_SHOWNORMAL;
    PROCESS_INFORMATION started{};
    if (!CreateProcessW(barePath ? command.c_str() : nullptr, commandLine.data(), nullptr, nullptr,
                        FALSE, 0, nullptr, nullptr, &startup, &started)) {
        Throw(ErrorNumberOf(GetLastError()), command);
    }
    const KernelHandle process(started.hProcess);
    const KernelHandle thread(started.hThread);
}

}  // namespace

void CCommonAPI::ShellSysInfo() {
    trap_(L"ShellSysInfo", [&] {
        const std::wstring program = RegValue(
            HKEY_LOCAL_MACHINE, L"SOFTWARE\\Microsoft\\Shared Tools\\MSINFO", L"PATH", REG_SZ);
        if (!program.empty()) {
            StartProgram(program);
            return;
        }
        const std::wstring folder = RegValue(
            HKEY_LOCAL_MACHINE, L"SOFTWARE\\Microsoft\\Shared Tools Location", L"MSINFO", REG_SZ);
        if (!folder.empty() && IsFile(folder + L"\\MSINFO32.EXE")) {
            StartProgram(folder + L"\\MSINFO32.EXE");
            return;
        }
        boxes_.Show({.text = L"System Information Is Unavailable At This Time"});
    });
}

std::wstring CCommonAPI::WinDirectory() {
    return trap_.Or(std::wstring(), L"WinDirectory", [] {
        std::wstring folder(255, L' ');
        const UINT length = GetWindowsDirectoryW(folder.data(), static_cast<UINT>(folder.size()));
        return folder.substr(0, length);
    });
}

std::wstring CCommonAPI::WinVersion() { return {}; }

bool CCommonAPI::IsWinNT() {
    return trap_.Or(false, L"IsWinNT", [] {
        OSVERSIONINFOEXA version{};
        static_assert(sizeof version == 156);
        version.dwOSVersionInfoSize = sizeof version;
        return GetVersionExA(reinterpret_cast<OSVERSIONINFOA*>(&version)) != FALSE &&
               version.dwPlatformId == VER_PLATFORM_WIN32_NT;
    });
}

}  // namespace vw
