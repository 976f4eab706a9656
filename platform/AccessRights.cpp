#include "platform/AccessRights.h"

#include <aclapi.h>

#include <cstddef>
#include <string>
#include <vector>

#include "platform/SystemPath.h"
#include "platform/WindowsHeader.h"

namespace vw {

namespace {

/// The access list of a file, as far as it may be read.
class AccessList {
  public:
    explicit AccessList(std::wstring_view path) {
        const std::wstring file = SystemPath(path);
        DWORD needed = 0;
        bytes_.resize(512);
        while (GetFileSecurityW(file.c_str(), DACL_SECURITY_INFORMATION, Descriptor(),
                                static_cast<DWORD>(bytes_.size()), &needed) == 0) {
            if (GetLastError() != ERROR_INSUFFICIENT_BUFFER || needed <= bytes_.size()) return;
            bytes_.resize(needed);
        }
        SECURITY_DESCRIPTOR_CONTROL control = 0;
        DWORD revision = 0;
        BOOL isPresent = FALSE;
        BOOL isDefaulted = FALSE;
        PACL list = nullptr;
        if (GetSecurityDescriptorControl(Descriptor(), &control, &revision) == 0 ||
            GetSecurityDescriptorDacl(Descriptor(), &isPresent, &list, &isDefaulted) == 0) {
            return;
        }
        isProtected_ = (control & SE_DACL_PROTECTED) != 0;
        list_ = isPresent != 0 ? list : nullptr;
    }
    AccessList(const AccessList&) = delete;
    AccessList& operator=(const AccessList&) = delete;

    /// Null when it could not be read.
    [[nodiscard]] PACL Get() const noexcept { return list_; }
    [[nodiscard]] bool IsProtected() const noexcept { return isProtected_; }

    /// Two lists are the same when these are; empty when it could not be read.
    [[nodiscard]] std::string Bytes() const {
        if (list_ == nullptr) return {};
        return (isProtected_ ? 'P' : 'U') +
               std::string(reinterpret_cast<const char*>(list_), list_->AclSize);
    }

  private:
    [[nodiscard]] PSECURITY_DESCRIPTOR Descriptor() noexcept { return bytes_.data(); }

    std::vector<std::byte> bytes_;
    PACL list_ = nullptr;
    bool isProtected_ = false;
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

void PassAccessRightsOn(std::wstring_view from, std::wstring_view to, std::string& usual) {
    const AccessList list(from);
    if (list.Get() == nullptr) return;
    // Inherited rights come from the folder, which is the same for both files.
    if (!list.IsProtected() && !HasExplicitEntry(list.Get())) return;
    // Setting takes far longer than asking: the system computes what is inherited once more.
    if (usual.empty()) usual = AccessList(to).Bytes();
    if (list.Bytes() == usual) return;
    const DWORD inheritance = list.IsProtected() ? PROTECTED_DACL_SECURITY_INFORMATION
                                                 : UNPROTECTED_DACL_SECURITY_INFORMATION;
    SetNamedSecurityInfoW(SystemPath(to).data(), SE_FILE_OBJECT,
                          DACL_SECURITY_INFORMATION | inheritance, nullptr, nullptr, list.Get(),
                          nullptr);
}

}  // namespace vw
