#pragma once

#include "platform/WindowsHeader.h"

namespace vw {

/// The keys of a toolbar that has the keyboard. The arrow keys, Home and End mark a button that can
/// be pressed; Enter and the space bar press it. The mark is the hot item of the control.
class ToolBarKeys {
  public:
    /// Takes over a toolbar, which has to outlive this object or be destroyed with its form.
    explicit ToolBarKeys(HWND bar);
    ~ToolBarKeys();
    ToolBarKeys(const ToolBarKeys&) = delete;
    ToolBarKeys& operator=(const ToolBarKeys&) = delete;

  private:
    /// Whether the key was one of the toolbar's.
    bool OnKey(WPARAM key);
    void Mark(int from, int step);
    void Press();

    static LRESULT OnControlMessage(HWND window, UINT message, WPARAM wParam, LPARAM lParam,
                                    void* data);

    HWND bar_;
    int marked_ = -1;  ///< the button that was marked last
};

}  // namespace vw
