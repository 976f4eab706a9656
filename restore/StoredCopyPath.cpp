#include "restore/StoredCopyPath.h"

#include <string_view>

#include "engine/CopyName.h"
#include "fsutil/PathText.h"
#include "platform/FileSystem.h"
#include "platform/TextCase.h"
#include "platform/Wildcards.h"

namespace vw {
namespace {

// The folder that copies lie in on every drive.
constexpr std::wstring_view kAnyCopyFolder = L"?:\\Backup";

// A path without links, also one whose end does not exist yet.
std::wstring RealPathOf(FileSystem& files, const std::wstring& path) {
    std::wstring existing = path;
    while (!files.Stat(existing)) {
        std::wstring parent = MFileDosShell::CFileLocation(existing);
        if (parent.size() >= existing.size() || parent.empty()) return path;
        existing = std::move(parent);
    }
    return files.RealPath(existing) + path.substr(existing.size());
}

bool HasStoredCopy(const std::wstring& path, const std::wstring& copyFolder) {
    for (std::size_t end = path.find(L'\\'); end != path.npos;) {
        const std::wstring folder = path.substr(0, end);
        const std::size_t next = path.find(L'\\', end + 1);
        const std::wstring name = path.substr(end + 1, next - end - 1);
        if (FindCopyMark(name) && (MatchesWildcard(UpperCase(folder), UpperCase(kAnyCopyFolder)) ||
                                   EqualNoCase(folder, copyFolder))) {
            return true;
        }
        end = next;
    }
    return false;
}

}  // namespace

bool IsInStoredCopy(FileSystem& files, const std::wstring& folder, const std::wstring& name,
                    const std::wstring& copyFolder) {
    const std::wstring where = files.FullPath(folder);
    return HasStoredCopy(JoinPath(where, name), copyFolder) ||
           HasStoredCopy(JoinPath(RealPathOf(files, where), name), RealPathOf(files, copyFolder));
}

}  // namespace vw
