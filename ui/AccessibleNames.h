#pragma once

#include <optional>
#include <string_view>
#include <vector>

#include "platform/Com.h"
#include "platform/WindowsHeader.h"

struct IAccPropServices;

namespace vw {

/// Names of controls for screen readers, where no label before the control names it. A system
/// without that service goes without the names.
class AccessibleNames {
  public:
    AccessibleNames() noexcept;
    /// With a service of the caller's, which has to outlive this object.
    explicit AccessibleNames(IAccPropServices& services) noexcept;
    ~AccessibleNames();
    AccessibleNames(const AccessibleNames&) = delete;
    AccessibleNames& operator=(const AccessibleNames&) = delete;

    /// Names a control, which must still exist when this object goes.
    void Set(HWND control, std::wstring_view name);

    /// Describes one element of a control, such as a row counted from 0; an empty text takes the
    /// description away.
    void Describe(HWND control, int element, std::wstring_view text);

    /// Says what a control shows, where its own position means something else to its readers. The
    /// same holds for its life.
    void SetValue(HWND control, std::wstring_view value);

  private:
    void SetProperty(HWND control, const GUID& property, std::wstring_view text);
    /// Null on a system without it.
    [[nodiscard]] IAccPropServices* Services() noexcept;

    std::optional<ComApartment> apartment_;  ///< released last
    ComPtr<IAccPropServices> services_;
    bool isAsked_ = false;  ///< the system was asked for the service
    std::vector<HWND> described_;
};

}  // namespace vw
