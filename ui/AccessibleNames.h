#pragma once

#include <compare>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/Com.h"
#include "platform/WindowsHeader.h"

struct IAccPropServices;

namespace vw {

/// Names of controls for screen readers, where no label before the control names it. A system
/// without that service goes without the names.
///
/// The service takes its time to load: what is set before Begin waits until then.
class AccessibleNames {
  public:
    /// Finds the service; null on a system without it.
    using Finder = ComPtr<IAccPropServices> (*)();

    explicit AccessibleNames(Finder find = FindService) noexcept;
    ~AccessibleNames();
    AccessibleNames(const AccessibleNames&) = delete;
    AccessibleNames& operator=(const AccessibleNames&) = delete;

    /// Gives the service what was set until now, and what is set later at once. For a form that is
    /// on the screen.
    void Begin();

    /// Names a control, which must still exist when this object goes.
    void Set(HWND control, std::wstring_view name);

    /// Describes one element of a control, such as a row counted from 0; an empty text takes the
    /// description away.
    void Describe(HWND control, int element, std::wstring_view text);

    /// Says what a control shows, where its own position means something else to its readers. The
    /// same holds for its life.
    void SetValue(HWND control, std::wstring_view value);

  private:
    struct Property {
        HWND control = nullptr;
        DWORD element = 0;  ///< counted from 1; 0 for the control itself
        const GUID* id = nullptr;
        friend auto operator<=>(const Property&, const Property&) = default;
    };

    [[nodiscard]] static ComPtr<IAccPropServices> FindService();
    /// An empty text takes the property away.
    void Set(const Property& property, std::wstring_view text);
    void Give(const Property& property, const std::wstring& text);

    Finder find_;
    std::optional<ComApartment> apartment_;  ///< since the service was asked for; released last
    ComPtr<IAccPropServices> services_;
    bool hasBegun_ = false;
    std::map<Property, std::wstring> waiting_;
    std::vector<HWND> named_;
};

}  // namespace vw
