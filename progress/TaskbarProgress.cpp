#include "progress/TaskbarProgress.h"

#include "platform/Com.h"

// The shell's declarations need those of the window system first.
#include <shobjidl.h>

namespace vw {

void ShowBusyInTaskbar(HWND window, bool busy) noexcept {
    const ComApartment apartment;
    const auto taskbar = MakeComObject<ITaskbarList3>(CLSID_TaskbarList, IID_ITaskbarList3);
    if (taskbar && SUCCEEDED(taskbar->HrInit())) {
        taskbar->SetProgressState(window, busy ? TBPF_INDETERMINATE : TBPF_NOPROGRESS);
    }
}

}  // namespace vw
