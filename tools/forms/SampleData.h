#pragma once

#include "ui/Form.h"

namespace vw::test {

/// Gives frmMain the lists of a household; without rows only the settings above them.
void FillMain(Form& form, bool rows);

/// Gives frmBusyDialog what it shows in the middle of a run.
void FillBusy(Form& form, bool report);

/// Gives frmAbout its version.
void FillAbout(Form& form, bool button);

}  // namespace vw::test
