#pragma once

#include <string>

#include "platform/WindowsHeader.h"

namespace vw::test {

/// A real, visible top-level window of a class of its own.
class TestWindow {
  public:
    explicit TestWindow(std::wstring className, const wchar_t* title = L"") {
        className_ = std::move(className);
        WNDCLASSEXW windowClass{};
        windowClass.cbSize = sizeof windowClass;
        windowClass.lpfnWndProc = DefWindowProcW;
        windowClass.hInstance = GetModuleHandleW(nullptr);
        windowClass.lpszClassName = className_.c_str();
        RegisterClassExW(&windowClass);
        handle_ = CreateWindowExW(WS_EX_ACCEPTFILES, className_.c_str(), title,
                                  WS_OVERLAPPEDWINDOW | WS_VISIBLE, 100, 80, 300, 200, nullptr,
                                  nullptr, GetModuleHandleW(nullptr), nullptr);
    }
    TestWindow(const TestWindow&) = delete;
    TestWindow& operator=(const TestWindow&) = delete;
    ~TestWindow() {
        if (IsWindow(handle_)) DestroyWindow(handle_);
        UnregisterClassW(className_.c_str(), GetModuleHandleW(nullptr));
    }

    [[nodiscard]] HWND Handle() const noexcept { return handle_; }
    [[nodiscard]] const std::wstring& ClassName() const noexcept { return className_; }

  private:
    std::wstring className_;
    HWND handle_ = nullptr;
};

}  // namespace vw::test
