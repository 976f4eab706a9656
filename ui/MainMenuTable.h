#pragma once

#include "ui/MenuData.h"

namespace vw {

/// The menu bar of frmMain.
[[nodiscard]] MenuData MainMenu() noexcept;

}  // namespace vw
