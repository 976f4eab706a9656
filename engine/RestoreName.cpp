#include "engine/RestoreName.h"

#include "fsutil/PathText.h"

namespace vw {

std::wstring RestoreName(int number) { return L"~vwr" + std::to_wstring(number) + L".tmp"; }

std::wstring FreeRestoreName(FileSystem& files, const std::wstring& folder) {
    for (int number = 0;; ++number) {
        std::wstring path = JoinPath(folder, RestoreName(number));
        if (!files.Stat(path)) return path;
    }
}

bool IsRefusedBeside(FileSystem& files, const std::wstring& target, const RuntimeError& error) {
    if (error.Number() == error_number::kDiskFull) return true;
    try {
        const std::wstring probe = FreeRestoreName(files, MFileDosShell::CFileLocation(target));
        files.Write(probe, {}, FileSystem::Flush::No);
        files.RemoveFile(probe);
        return false;
    } catch (const RuntimeError&) {
        return true;
    }
}

RuntimeError WithPath(const RuntimeError& error, const std::wstring& path) {
    return {error.Number(), error.Description(), path, error.Line(), error.SystemCode()};
}

}  // namespace vw
