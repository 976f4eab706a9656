#include "ui/AccessibleNames.h"

// The accessibility declarations need those of the window system and of COM first.
#include <objbase.h>
#include <oleacc.h>

#include <algorithm>
#include <iterator>
#include <string>
#include <utility>

namespace vw {

namespace {

// The import libraries at hand leave these out.
constexpr GUID kServicesClass{
    0xb5f8350b, 0x0548, 0x48b1, {0xa6, 0xee, 0x88, 0xbd, 0x00, 0xb4, 0xa5, 0xe7}};
constexpr GUID kServices{
    0x6e26e776, 0x04f0, 0x495d, {0x80, 0xe4, 0x33, 0x30, 0x35, 0x2e, 0x31, 0x69}};
constexpr GUID kValueProperty{
    0x123fe443, 0x211a, 0x4615, {0x95, 0x27, 0xc4, 0x5a, 0x7e, 0x93, 0x71, 0x7a}};
constexpr GUID kNameProperty{
    0x608d3df8, 0x8128, 0x4aa7, {0xa4, 0x28, 0xf5, 0x5e, 0x49, 0x26, 0x72, 0x91}};

constexpr GUID kDescriptionProperty{
    0x4d48dfe4, 0xbd3f, 0x491f, {0xa6, 0x48, 0x49, 0x2d, 0x6f, 0x20, 0xc5, 0x88}};

}  // namespace

AccessibleNames::AccessibleNames() noexcept = default;

AccessibleNames::AccessibleNames(IAccPropServices& services) noexcept
    : services_(&services), isAsked_(true) {
    services.AddRef();
}

// A form without such names, as the opening screen, does without the service.
IAccPropServices* AccessibleNames::Services() noexcept {
    if (!std::exchange(isAsked_, true)) {
        apartment_.emplace();
        services_ = MakeComObject<IAccPropServices>(kServicesClass, kServices);
    }
    return services_.get();
}

AccessibleNames::~AccessibleNames() {
    constexpr GUID kProperties[]{kNameProperty, kValueProperty};
    for (const HWND control : described_) {
        services_->ClearHwndProps(control, static_cast<DWORD>(OBJID_CLIENT), CHILDID_SELF,
                                  kProperties, static_cast<int>(std::size(kProperties)));
    }
}

void AccessibleNames::Set(HWND control, std::wstring_view name) {
    if (!name.empty()) SetProperty(control, kNameProperty, name);
}

void AccessibleNames::SetValue(HWND control, std::wstring_view value) {
    SetProperty(control, kValueProperty, value);
}

void AccessibleNames::SetProperty(HWND control, const GUID& property, std::wstring_view text) {
    if (control == nullptr || Services() == nullptr) return;
    const HRESULT result =
        services_->SetHwndPropStr(control, static_cast<DWORD>(OBJID_CLIENT), CHILDID_SELF, property,
                                  std::wstring(text).c_str());
    const bool known = std::ranges::find(described_, control) != described_.end();
    if (SUCCEEDED(result) && !known) described_.push_back(control);
}

void AccessibleNames::Describe(HWND control, int element, std::wstring_view text) {
    if (control == nullptr || Services() == nullptr) return;
    const auto object = static_cast<DWORD>(OBJID_CLIENT);
    // Elements count from 1.
    const auto child = static_cast<DWORD>(element) + 1;
    if (text.empty()) {
        services_->ClearHwndProps(control, object, child, &kDescriptionProperty, 1);
    } else {
        services_->SetHwndPropStr(control, object, child, kDescriptionProperty,
                                  std::wstring(text).c_str());
    }
}

}  // namespace vw
