#pragma once

#include <gtest/gtest.h>

#include <string>

#include "platform/ProgramState.h"
#include "progress/BusyDialog.h"
#include "tests/progress/RecordingProgram.h"
#include "tests/support/TestEnvironment.h"
#include "tests/ui/FormFixture.h"
#include "ui/resource.h"

namespace vw::test {

/// A busy dialog in each language.
class BusyDialogWindow : public testing::TestWithParam<Language> {
  protected:
    BusyDialogWindow() { host.dialog = &dialog; }

    Form& Window() { return dialog.Window(); }
    [[nodiscard]] std::wstring Report() { return Window().Text(L"txtReport"); }
    void Tick() { SendMessageW(Window().Handle(), WM_TIMER, ID_tmrBusy, 0); }
    void Press() {
        const HWND button = Window().Control(L"cmdCancel");
        SendMessageW(Window().Handle(), WM_COMMAND, MAKEWPARAM(ID_cmdCancel, BN_CLICKED),
                     reinterpret_cast<LPARAM>(button));
    }
    /// The button that Enter presses; 0 without one.
    [[nodiscard]] WORD EnterButton() {
        return LOWORD(SendMessageW(Window().Handle(), DM_GETDEFID, 0, 0));
    }
    void Minimise() { ShowWindow(Window().Handle(), SW_MINIMIZE); }

    TestEnvironment world;
    ProgramState state;
    RecordingProgram host{state};
    BusyDialog dialog{world.system, state, GetParam(), host.Surroundings()};
};

}  // namespace vw::test
