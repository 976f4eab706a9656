#pragma once

#include "platform/WindowsHeader.h"

namespace vw {

/// Access rights for a new object of the system, from their text form (SDDL).
class SecurityDescriptor {
  public:
    /// Throws the system's error for a text that is none.
    explicit SecurityDescriptor(const wchar_t* text);
    SecurityDescriptor(const SecurityDescriptor&) = delete;
    SecurityDescriptor& operator=(const SecurityDescriptor&) = delete;
    ~SecurityDescriptor();

    /// For the calls that make the object; valid as long as this object lives.
    [[nodiscard]] SECURITY_ATTRIBUTES* Attributes() noexcept { return &attributes_; }

  private:
    SECURITY_ATTRIBUTES attributes_{sizeof(SECURITY_ATTRIBUTES), nullptr, FALSE};
};

}  // namespace vw
