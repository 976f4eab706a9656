#include "ui/Subclass.h"

#include <memory>

namespace vw {

namespace {

struct Subclassing {
    WNDPROC control = nullptr;
    SubclassProcedure procedure = nullptr;  ///< null once it was taken away
    void* data = nullptr;
};

LRESULT CALLBACK Dispatch(HWND window, UINT message, WPARAM wParam, LPARAM lParam);

Subclassing* SubclassingOf(HWND window) noexcept {
    return reinterpret_cast<Subclassing*>(GetWindowLongPtrW(window, GWLP_USERDATA));
}

bool IsFirst(HWND window) noexcept {
    return GetWindowLongPtrW(window, GWLP_WNDPROC) == reinterpret_cast<LONG_PTR>(Dispatch);
}

void Forget(HWND window) noexcept {
    const std::unique_ptr<Subclassing> forgotten(SubclassingOf(window));
    SetWindowLongPtrW(window, GWLP_USERDATA, 0);
    if (!IsFirst(window)) return;
    SetWindowLongPtrW(window, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(forgotten->control));
}

LRESULT CALLBACK Dispatch(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    const Subclassing now = *SubclassingOf(window);
    const LRESULT result = now.procedure != nullptr
                               ? now.procedure(window, message, wParam, lParam, now.data)
                               : CallWindowProcW(now.control, window, message, wParam, lParam);
    if (message == WM_NCDESTROY && SubclassingOf(window) != nullptr) Forget(window);
    return result;
}

}  // namespace

void Subclass(HWND window, SubclassProcedure procedure, void* data) {
    auto made = std::make_unique<Subclassing>();
    made->control = reinterpret_cast<WNDPROC>(GetWindowLongPtrW(window, GWLP_WNDPROC));
    made->procedure = procedure;
    made->data = data;
    SetWindowLongPtrW(window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(made.release()));
    SetWindowLongPtrW(window, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(Dispatch));
}

void Unsubclass(HWND window) noexcept {
    Subclassing* const now = SubclassingOf(window);
    if (now == nullptr) return;
    // A procedure that others put before this one goes on calling it.
    if (IsFirst(window)) {
        Forget(window);
    } else {
        now->procedure = nullptr;
    }
}

LRESULT CallControl(HWND window, UINT message, WPARAM wParam, LPARAM lParam) noexcept {
    const Subclassing* const now = SubclassingOf(window);
    const auto control = now != nullptr
                             ? now->control
                             : reinterpret_cast<WNDPROC>(GetWindowLongPtrW(window, GWLP_WNDPROC));
    return CallWindowProcW(control, window, message, wParam, lParam);
}

}  // namespace vw
