#include "platform/AccessRights.h"

#include <aclapi.h>

#include "platform/SystemPath.h"
#include "platform/WindowsHeader.h"

namespace vw {

namespace {

// Memory that the system allocated for its answer.
class LocalMemory {
  public:
    LocalMemory() = default;
    LocalMemory(const LocalMemory&) = delete;
    LocalMemory& operator=(const LocalMemory&) = delete;
    ~LocalMemory() { LocalFree(memory_); }

    [[nodiscard]] PSECURITY_DESCRIPTOR* Address() noexcept { return &memory_; }
    [[nodiscard]] PSECURITY_DESCRIPTOR Get() const noexcept { return memory_; }

  private:
    PSECURITY_DESCRIPTOR memory_ = nullptr;
};

bool HasExplicitEntry(PACL list) {
    for (DWORD i = 0; i < list->AceCount; ++i) {
        void* entry = nullptr;
        if (GetAce(list, i, &entry) == 0) return false;
        if ((static_cast<ACE_HEADER*>(entry)->AceFlags & INHERITED_ACE) == 0) return true;
    }
    return false;
}

}  // namespace

void PassAccessRightsOn(std::wstring_view from, std::wstring_view to) {
    LocalMemory descriptor;
    PACL list = nullptr;
    if (GetNamedSecurityInfoW(SystemPath(from).data(), SE_FILE_OBJECT, DACL_SECURITY_INFORMATION,
                              nullptr, nullptr, &list, nullptr,
                              descriptor.Address()) != ERROR_SUCCESS ||
        list == nullptr) {
        return;
    }
    SECURITY_DESCRIPTOR_CONTROL control = 0;
    DWORD revision = 0;
    if (GetSecurityDescriptorControl(descriptor.Get(), &control, &revision) == 0) return;
    const bool isProtected = (control & SE_DACL_PROTECTED) != 0;
    // Inherited rights come from the folder, which is the same for both files.
    if (!isProtected && !HasExplicitEntry(list)) return;
    const DWORD inheritance =
        isProtected ? PROTECTED_DACL_SECURITY_INFORMATION : UNPROTECTED_DACL_SECURITY_INFORMATION;
    SetNamedSecurityInfoW(SystemPath(to).data(), SE_FILE_OBJECT,
                          DACL_SECURITY_INFORMATION | inheritance, nullptr, nullptr, list, nullptr);
}

}  // namespace vw
