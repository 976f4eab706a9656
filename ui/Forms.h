#pragma once

#include "ui/FormData.h"

namespace vw {

/// The forms of the program: frmMain, frmBusyDialog, frmTrayIcon, frmAbout.
[[nodiscard]] const FormData& MainForm() noexcept;
[[nodiscard]] const FormData& BusyForm() noexcept;
[[nodiscard]] const FormData& TrayForm() noexcept;
[[nodiscard]] const FormData& AboutForm() noexcept;

}  // namespace vw
