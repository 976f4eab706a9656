#pragma once

#include <exception>
#include <string>

#include "platform/WindowsHeader.h"

namespace vw {

/// A window of ours. The object owns the window: it is made by Create and destroyed with the
/// object, and no message reaches the object once the window is gone. The window may be destroyed
/// while it handles a message, the object may not.
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
        HWND owner = nullptr;
        RECT place{CW_USEDEFAULT, CW_USEDEFAULT, CW_USEDEFAULT, CW_USEDEFAULT};  ///< right and
                                                                                 ///< bottom: size
    };

    /// Makes the window, hidden; throws the system's error when it cannot.
    void Create(const Shape& shape);
    void Destroy() noexcept;

    /// Handles a message. What is not handled goes to DefWindowProcW.
    virtual LRESULT OnMessage(UINT message, WPARAM wParam, LPARAM lParam);

    /// Takes what OnMessage throws: it must not pass through the system's code.
    virtual void OnEscaped(const std::exception_ptr& error) noexcept;

    /// The window is gone; its handle too.
    virtual void OnGone() {}

    /// The window of ours behind a handle, or nothing.
    [[nodiscard]] static Window* From(HWND window) noexcept;

  private:
    static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam);

    HWND handle_ = nullptr;
};

}  // namespace vw
