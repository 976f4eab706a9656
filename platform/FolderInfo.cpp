#include "platform/FolderInfo.h"

#include "platform/Handle.h"
#include "platform/SystemError.h"
#include "platform/SystemPath.h"

namespace vw {

namespace {

constexpr DWORD kMarks = FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_SYSTEM | FILE_ATTRIBUTE_READONLY;
// The other attributes of a folder that are set by their bit alone.
constexpr DWORD kOwn = FILE_ATTRIBUTE_ARCHIVE | FILE_ATTRIBUTE_NOT_CONTENT_INDEXED;

FileHandle OpenFolder(std::wstring_view path, DWORD access) {
    constexpr DWORD kSharedWithAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
    FileHandle folder(CreateFileW(SystemPath(path).c_str(), access, kSharedWithAll, nullptr,
                                  OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS, nullptr));
    if (!folder) RaiseLast(path);
    return folder;
}

FILE_BASIC_INFO InfoOf(const FileHandle& folder, std::wstring_view path) {
    FILE_BASIC_INFO info{};
    if (GetFileInformationByHandleEx(folder.Get(), FileBasicInfo, &info, sizeof info) == 0) {
        RaiseLast(path);
    }
    return info;
}

}  // namespace

void CopyInfoOfFolder(std::wstring_view from, std::wstring_view to, bool keepMarks) {
    const FILE_BASIC_INFO source = InfoOf(OpenFolder(from, FILE_READ_ATTRIBUTES), from);
    const FileHandle target = OpenFolder(to, FILE_READ_ATTRIBUTES | FILE_WRITE_ATTRIBUTES);
    const DWORD old = InfoOf(target, to).FileAttributes;
    const DWORD marks =
        (source.FileAttributes & kMarks) | (keepMarks ? old & kMarks : DWORD{0}) | (old & kOwn);
    // A zero leaves the other dates as they are.
    FILE_BASIC_INFO info{};
    info.CreationTime = source.CreationTime;
    info.LastWriteTime = source.LastWriteTime;
    info.FileAttributes = marks == 0 ? DWORD{FILE_ATTRIBUTE_NORMAL} : marks;
    if (SetFileInformationByHandle(target.Get(), FileBasicInfo, &info, sizeof info) == 0) {
        RaiseLast(to);
    }
}

}  // namespace vw
