#include "ui/Window.h"

#include "platform/SystemError.h"

namespace vw {

Window::~Window() { Destroy(); }

void Window::Create(const Shape& shape) {
    const HINSTANCE instance = GetModuleHandleW(nullptr);
    WNDCLASSEXW windowClass{};
    windowClass.cbSize = sizeof windowClass;
    windowClass.lpfnWndProc = Procedure;
    windowClass.hInstance = instance;
    windowClass.hCursor = LoadCursorW(nullptr, IDC_ARROW);
    windowClass.hbrBackground = GetSysColorBrush(COLOR_BTNFACE);
    windowClass.lpszClassName = shape.className.c_str();
    if (RegisterClassExW(&windowClass) == 0 && GetLastError() != ERROR_CLASS_ALREADY_EXISTS) {
        RaiseLast({});
    }
    CreateWindowExW(shape.extendedStyle, shape.className.c_str(), shape.title.c_str(), shape.style,
                    shape.place.left, shape.place.top, shape.place.right, shape.place.bottom,
                    shape.owner, nullptr, instance, this);
    if (handle_ == nullptr) RaiseLast({});
}

void Window::Destroy() noexcept {
    if (handle_ != nullptr) DestroyWindow(handle_);
}

LRESULT Window::OnMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    return DefWindowProcW(handle_, message, wParam, lParam);
}

void Window::OnEscaped(const std::exception_ptr&) noexcept {}

Window* Window::From(HWND window) noexcept {
    const auto procedure = GetClassLongPtrW(window, GCLP_WNDPROC);
    if (procedure != reinterpret_cast<ULONG_PTR>(&Procedure)) return nullptr;
    return reinterpret_cast<Window*>(GetWindowLongPtrW(window, GWLP_USERDATA));
}

LRESULT CALLBACK Window::Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_NCCREATE) {
        const auto* create = reinterpret_cast<const CREATESTRUCTW*>(lParam);
        auto* self = static_cast<Window*>(create->lpCreateParams);
        self->handle_ = window;
        SetWindowLongPtrW(window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(self));
    }
    auto* self = reinterpret_cast<Window*>(GetWindowLongPtrW(window, GWLP_USERDATA));
    if (self == nullptr) return DefWindowProcW(window, message, wParam, lParam);
    LRESULT result = 0;
    try {
        result = self->OnMessage(message, wParam, lParam);
    } catch (...) {
        self->OnEscaped(std::current_exception());
    }
    if (message != WM_NCDESTROY) return result;
    SetWindowLongPtrW(window, GWLP_USERDATA, 0);
    self->handle_ = nullptr;
    try {
        self->OnGone();
    } catch (...) {
        self->OnEscaped(std::current_exception());
    }
    return result;
}

}  // namespace vw
