#pragma once

#include <string>

#include "platform/WindowsHeader.h"

namespace vw {

/// A window of ours. The object owns the window: it is made by Create and destroyed with the
/// object, and no message reaches the object once the window is gone.
class Window {
  public:
    Window() = default;
    Window(const Window&) = delete;
    Window& operator=(const Window&) = delete;
    virtual ~Window();

    [[nodiscard]] HWND Handle() const noexcept { return handle_; }

  protected:
    /// How a window comes to be.
    struct Shape {
        std::wstring className;
        std::wstring title;
        DWORD style = 0;
        DWORD extendedStyle = 0;
    };

    /// Makes the window, hidden; raises the system's error when it cannot.
    void Create(const Shape& shape);
    void Destroy() noexcept;

    /// Handles a message. What is not handled goes to DefWindowProcW. No error may leave it.
    virtual LRESULT OnMessage(UINT message, WPARAM wParam, LPARAM lParam);

  private:
    static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam);

    HWND handle_ = nullptr;
};

}  // namespace vw
