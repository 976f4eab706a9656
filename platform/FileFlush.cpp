#include "platform/FileFlush.h"

#include "platform/Handle.h"
#include "platform/ReadOnlyMark.h"
#include "platform/SystemError.h"
#include "platform/SystemPath.h"

namespace vw {

namespace {

FileHandle OpenToFlush(const std::wstring& systemPath) {
    constexpr DWORD kSharedWithAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
    return FileHandle(CreateFileW(systemPath.c_str(), GENERIC_WRITE, kSharedWithAll, nullptr,
                                  OPEN_EXISTING, 0, nullptr));
}

// Drives and servers that cannot be asked for it keep nothing back that they could write earlier.
bool MeansUnknownRequest(DWORD code) {
    return code == ERROR_INVALID_FUNCTION || code == ERROR_NOT_SUPPORTED ||
           code == ERROR_INVALID_PARAMETER;
}

}  // namespace

void FlushContent(std::wstring_view path) {
    const std::wstring systemPath = SystemPath(path);
    const DWORD attributes = GetFileAttributesW(systemPath.c_str());
    FileHandle file = OpenToFlush(systemPath);
    bool wasReadOnly = false;
    if (!file && GetLastError() == ERROR_ACCESS_DENIED && ClearReadOnly(systemPath)) {
        wasReadOnly = true;
        file = OpenToFlush(systemPath);
    }
    const bool flushed = file && FlushFileBuffers(file.Get()) != 0;
    const DWORD code = flushed ? DWORD{ERROR_SUCCESS} : GetLastError();
    file.Reset();
    if (wasReadOnly) SetFileAttributesW(systemPath.c_str(), attributes);
    if (code != ERROR_SUCCESS && !MeansUnknownRequest(code)) RaiseCode(code, path);
}

}  // namespace vw
