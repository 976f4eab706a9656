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

AccessibleNames::AccessibleNames(Finder find) noexcept : find_(find) {}

ComPtr<IAccPropServices> AccessibleNames::FindService() {
    return MakeComObject<IAccPropServices>(kServicesClass, kServices);
}

AccessibleNames::~AccessibleNames() {
    constexpr GUID kProperties[]{kNameProperty, kValueProperty};
    for (const HWND control : named_) {
        services_->ClearHwndProps(control, static_cast<DWORD>(OBJID_CLIENT), CHILDID_SELF,
                                  kProperties, static_cast<int>(std::size(kProperties)));
    }
}

void AccessibleNames::Begin() {
    hasBegun_ = true;
    for (const auto& [property, text] : std::exchange(waiting_, {})) Give(property, text);
}

void AccessibleNames::Set(HWND control, std::wstring_view name) {
    if (!name.empty()) Set({control, CHILDID_SELF, &kNameProperty}, name);
}

void AccessibleNames::SetValue(HWND control, std::wstring_view value) {
    Set({control, CHILDID_SELF, &kValueProperty}, value);
}

void AccessibleNames::Describe(HWND control, int element, std::wstring_view text) {
    Set({control, static_cast<DWORD>(element) + 1, &kDescriptionProperty}, text);
}

void AccessibleNames::Set(const Property& property, std::wstring_view text) {
    if (property.control == nullptr) return;
    if (hasBegun_) {
        Give(property, std::wstring(text));
    } else {
        waiting_[property] = text;
    }
}

// A form without such names, as the opening screen, does without the service.
void AccessibleNames::Give(const Property& property, const std::wstring& text) {
    const auto& [control, element, id] = property;
    if (!apartment_) {
        apartment_.emplace();
        services_ = find_();
    }
    if (!services_) return;
    const auto object = static_cast<DWORD>(OBJID_CLIENT);
    if (text.empty()) {
        services_->ClearHwndProps(control, object, element, id, 1);
        return;
    }
    const HRESULT result = services_->SetHwndPropStr(control, object, element, *id, text.c_str());
    const bool isNew =
        element == CHILDID_SELF && std::ranges::find(named_, control) == named_.end();
    if (SUCCEEDED(result) && isNew) named_.push_back(control);
}

}  // namespace vw
