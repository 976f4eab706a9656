// What the button of the task bar shows: a stand-in for the system's task bar keeps it.

#include <gtest/gtest.h>

#include <vector>

#include "platform/ProgramState.h"
#include "progress/BusyDialog.h"
#include "progress/TaskbarProgress.h"
#include "tests/support/ComDoubles.h"
#include "tests/support/ImportHook.h"
#include "tests/support/QuietProgram.h"

// The shell's declarations need those of the window system first.
#include <shobjidl.h>

extern "C" {
extern void* __imp_CoInitializeEx;  // NOLINT(clang-diagnostic-reserved-identifier)
}

namespace vw::test {
namespace {

struct ButtonState {
    HWND window;
    TBPFLAG state;

    friend bool operator==(const ButtonState&, const ButtonState&) = default;
};

class Taskbar final : public ComObject<ITaskbarList3> {
  public:
    HRESULT STDMETHODCALLTYPE HrInit() override { return initialises ? S_OK : E_FAIL; }
    HRESULT STDMETHODCALLTYPE SetProgressState(HWND window, TBPFLAG state) override {
        states.push_back({window, state});
        return S_OK;
    }

    HRESULT STDMETHODCALLTYPE AddTab(HWND) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE DeleteTab(HWND) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE ActivateTab(HWND) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE SetActiveAlt(HWND) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE MarkFullscreenWindow(HWND, WINBOOL) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE SetProgressValue(HWND, ULONGLONG, ULONGLONG) override {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE RegisterTab(HWND, HWND) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE UnregisterTab(HWND) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE SetTabOrder(HWND, HWND) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE SetTabActive(HWND, HWND, DWORD) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE ThumbBarAddButtons(HWND, UINT, LPTHUMBBUTTON) override {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE ThumbBarUpdateButtons(HWND, UINT, LPTHUMBBUTTON) override {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE ThumbBarSetImageList(HWND, HIMAGELIST) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE SetOverlayIcon(HWND, HICON, LPCWSTR) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE SetThumbnailTooltip(HWND, LPCWSTR) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE SetThumbnailClip(HWND, RECT*) override { return E_NOTIMPL; }

    std::vector<ButtonState> states;
    bool initialises = true;
};

class TaskbarProgress : public testing::Test {
  protected:
    TaskbarProgress() {
        factory.create = [this](REFIID id, void** object) {
            return taskbar.QueryInterface(id, object);
        };
        EXPECT_TRUE(SUCCEEDED(CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED)));
        EXPECT_EQ(CoRegisterClassObject(CLSID_TaskbarList, &factory, CLSCTX_INPROC_SERVER,
                                        REGCLS_MULTIPLEUSE, &registration),
                  S_OK);
    }
    ~TaskbarProgress() override {
        CoRevokeClassObject(registration);
        CoUninitialize();
    }
    void ButtonCreated() {
        SendMessageW(dialog.Window().Handle(), RegisterWindowMessageW(L"TaskbarButtonCreated"), 0,
                     0);
    }

    Taskbar taskbar;
    ComFactory factory;
    DWORD registration = 0;
    TestEnvironment env;
    ProgramState state;
    QuietProgram program;
    BusyDialog dialog{env.system,
                      state,
                      Language::English,
                      {.program = program, .showIcon = [](bool) {}, .showMainWindow = [] {}}};
};

TEST_F(TaskbarProgress, Busy_ShowsAnEndlessBarAndEndsIt) {
    auto* const window = reinterpret_cast<HWND>(INT_PTR{1});
    ShowBusyInTaskbar(window, true);
    ShowBusyInTaskbar(window, false);
    EXPECT_EQ(taskbar.states,
              (std::vector<ButtonState>{{window, TBPF_INDETERMINATE}, {window, TBPF_NOPROGRESS}}));
}

int apartments = 0;

HRESULT WINAPI CountApartment(LPVOID, DWORD) {
    ++apartments;
    return E_FAIL;
}

TEST_F(TaskbarProgress, Busy_UsesAnApartmentOfItsOwn) {
    const ImportHook count(__imp_CoInitializeEx, &CountApartment);
    apartments = 0;
    ShowBusyInTaskbar(nullptr, true);
    EXPECT_EQ(apartments, 1);
}

TEST_F(TaskbarProgress, TaskbarRefuses_SetsNoState) {
    taskbar.initialises = false;
    ShowBusyInTaskbar(nullptr, true);
    EXPECT_TRUE(taskbar.states.empty());
}

TEST_F(TaskbarProgress, Dialog_WorkBeginsAndEnds_ShowsBoth) {
    dialog.Report(L"x", false);
    ButtonCreated();
    const HWND window = dialog.Window().Handle();
    EXPECT_EQ(taskbar.states, (std::vector<ButtonState>{{window, TBPF_INDETERMINATE}}));
    taskbar.states.clear();
    dialog.BusyHide(false);
    EXPECT_EQ(taskbar.states, (std::vector<ButtonState>{{window, TBPF_NOPROGRESS}}));
}

// The task bar was started anew behind a report that is still open.
TEST_F(TaskbarProgress, Dialog_ButtonMadeWhenTheWorkIsOver_ShowsNone) {
    dialog.Report(L"x", false);
    dialog.Window().Check(L"chkDontHide", true);
    dialog.BusyHide(false);
    taskbar.states.clear();
    ButtonCreated();
    EXPECT_TRUE(taskbar.states.empty());
}

}  // namespace
}  // namespace vw::test
