#include "platform/HeldFile.h"

#include "platform/Handle.h"
#include "platform/ReadOnlyMark.h"
#include "platform/SecurityDescriptor.h"
#include "platform/SystemError.h"
#include "platform/SystemPath.h"

namespace vw {

namespace {

// A file that a failed computer left behind has to be usable for every account of the next one.
constexpr const wchar_t* kOpenToEveryone = L"D:(A;;FA;;;WD)";

class SystemHeldFile final : public HeldFile {
  public:
    explicit SystemHeldFile(FileHandle handle) : handle_(std::move(handle)) {}

  private:
    FileHandle handle_;
};

FileHandle OpenAlone(const std::wstring& systemPath, SECURITY_ATTRIBUTES* rights) {
    return FileHandle(CreateFileW(systemPath.c_str(), GENERIC_WRITE | DELETE, 0, rights,
                                  OPEN_ALWAYS, FILE_ATTRIBUTE_HIDDEN | FILE_FLAG_DELETE_ON_CLOSE,
                                  nullptr));
}

// Some disks and servers have no access rights, or do not allow to set them.
bool MayRefuseRights(DWORD code) {
    return code == ERROR_ACCESS_DENIED || code == ERROR_NOT_SUPPORTED ||
           code == ERROR_INVALID_PARAMETER;
}

}  // namespace

std::unique_ptr<HeldFile> HoldFile(std::wstring_view path) {
    const std::wstring systemPath = SystemPath(path);
    SecurityDescriptor rights(kOpenToEveryone);
    FileHandle file = OpenAlone(systemPath, rights.Attributes());
    DWORD code = GetLastError();
    if (!file && code == ERROR_ACCESS_DENIED && ClearReadOnly(systemPath)) {
        file = OpenAlone(systemPath, rights.Attributes());
        code = GetLastError();
    }
    if (!file && MayRefuseRights(code)) {
        file = OpenAlone(systemPath, nullptr);
        code = GetLastError();
    }
    if (!file) RaiseCode(code, path);
    return std::make_unique<SystemHeldFile>(std::move(file));
}

}  // namespace vw
