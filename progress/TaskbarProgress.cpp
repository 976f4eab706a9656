#include "progress/TaskbarProgress.h"

// The shell's declarations need those of the window system first.
#include <shobjidl.h>

namespace vw {

void ShowBusyInTaskbar(HWND window, bool busy) noexcept {
    const bool initialised = SUCCEEDED(CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED));
    ITaskbarList3* taskbar = nullptr;
    const HRESULT made = CoCreateInstance(CLSID_TaskbarList, nullptr, CLSCTX_INPROC_SERVER,
                                          IID_ITaskbarList3, reinterpret_cast<void**>(&taskbar));
    if (SUCCEEDED(made)) {
        if (SUCCEEDED(taskbar->HrInit())) {
            taskbar->SetProgressState(window, busy ? TBPF_INDETERMINATE : TBPF_NOPROGRESS);
        }
        taskbar->Release();
    }
    if (initialised) CoUninitialize();
}

}  // namespace vw
