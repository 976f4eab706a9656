#pragma once

#include <memory>

#include "platform/WindowsHeader.h"
// Needs the declarations of the window system first.
#include <objbase.h>

namespace vw {

/// Initialises COM for this thread as long as it lives. Objects made meanwhile must be gone by
/// then.
class ComApartment {
  public:
    // S_FALSE (COM was initialised before) has to be undone too, a refusal has not.
    explicit ComApartment(DWORD model = COINIT_APARTMENTTHREADED) noexcept
        : initialised_(SUCCEEDED(CoInitializeEx(nullptr, model))) {}
    ~ComApartment() {
        if (initialised_) CoUninitialize();
    }
    ComApartment(const ComApartment&) = delete;
    ComApartment& operator=(const ComApartment&) = delete;

  private:
    bool initialised_;
};

/// Releases a COM object.
struct ComReleaser {
    void operator()(IUnknown* object) const noexcept { object->Release(); }
};

/// Owns one reference to a COM object.
template <class Interface>
using ComPtr = std::unique_ptr<Interface, ComReleaser>;

/// Makes an object of a class within this process; null when the system cannot.
template <class Interface>
[[nodiscard]] ComPtr<Interface> MakeComObject(REFCLSID classId, REFIID interfaceId) noexcept {
    void* object = nullptr;
    const HRESULT result =
        CoCreateInstance(classId, nullptr, CLSCTX_INPROC_SERVER, interfaceId, &object);
    return ComPtr<Interface>(SUCCEEDED(result) ? static_cast<Interface*>(object) : nullptr);
}

}  // namespace vw
