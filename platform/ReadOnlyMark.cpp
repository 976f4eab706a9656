#include "platform/ReadOnlyMark.h"

#include "platform/WindowsHeader.h"

namespace vw {

bool ClearReadOnly(const std::wstring& systemPath) {
    const DWORD attributes = GetFileAttributesW(systemPath.c_str());
    if (attributes == INVALID_FILE_ATTRIBUTES || (attributes & FILE_ATTRIBUTE_READONLY) == 0) {
        return false;
    }
    const DWORD writable = attributes & ~static_cast<DWORD>(FILE_ATTRIBUTE_READONLY);
    return SetFileAttributesW(systemPath.c_str(),
                              writable == 0 ? FILE_ATTRIBUTE_NORMAL : writable) != 0;
}

}  // namespace vw
